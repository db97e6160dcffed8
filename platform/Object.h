#pragma once

#include <platform/Ref.h>
#include <platform/RefCount.h>

#include <atomic>
#include <cstdint>
#include <mutex>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define FILES_PDF_HAS_SINGLE_THREADED
#endif

// The control block of weak references: it outlives its object as long as somebody holds it.
class EXPORTED GcProxy {
public:
    // Of an object whose share is counted already.
    explicit GcProxy(Object* object) noexcept : _object(object) {}
    GcProxy(const GcProxy&) = delete;
    GcProxy& operator=(const GcProxy&) = delete;

    // Keep the block, and let it go.
    void incWeakRef() noexcept;
    void decWeakRef() noexcept;
    // The object with one count added, which the caller owns; null when the object is gone.
    Object* lockWeakRef() noexcept;

private:
    friend class Object;
    void detach() noexcept;

    std::mutex _lock;
    Object* _object;
    std::atomic<std::size_t> _weakCount{1}; // the object's own share included
};

// Whether the process has one thread so far, so that counting needs no atomic operation, which costs
// several times a plain one.
inline bool isSingleThreaded() noexcept
{
#ifdef FILES_PDF_HAS_SINGLE_THREADED
    return __libc_single_threaded;
#else
    return false;
#endif
}

// The root of all counted classes. A new object has the count 0: the first `Ref` takes it. Counting is atomic
// unless the process has one thread only, so a `Ref` may be passed between threads; the object that it leads to may
// not be used by two threads at once unless its class says so.
class EXPORTED Object : public virtual RefCount {
public:
    Object() noexcept = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    // From the pool. The failure of an allocation ends the program.
    [[gnu::returns_nonnull]] static void* operator new(std::size_t size) noexcept;
    static void operator delete(void* memory, std::size_t size) noexcept;

    // RefCount
    GcProxy* gcproxy() noexcept override;
    void incRef() noexcept override
    {
        if (isSingleThreaded())
            _count.store(_count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        else
            _count.fetch_add(1, std::memory_order_relaxed);
    }
    void decRef() noexcept override
    {
        const bool isAlone = isSingleThreaded(); // before the count: what others have done to it is then seen
        const std::uint32_t count = _count.load(std::memory_order_acquire);
        if (count == 1 && !_proxy.load(std::memory_order_acquire))
            delete this; // the last holder, and there is no weak one that could count it up again
        else if (count != 1 && isAlone)
            _count.store(count - 1, std::memory_order_relaxed);
        else
            dropCount();
    }
    void lockRef() noexcept override { incRef(); }
    void unlockRef() noexcept override { _count.fetch_sub(1, std::memory_order_acq_rel); }
    std::size_t counterRef() const noexcept override { return _count.load(std::memory_order_relaxed); }
    Object* obj() noexcept override { return this; }
    Ref<String> _dump() const noexcept override;
    bool _selfTest() const noexcept override;
    Ref<String> dump() const noexcept override;
    bool selfTest() const noexcept override;

protected:
    ~Object() noexcept override = default;

private:
    friend class GcProxy;
    void dropCount() noexcept;
    void destroy() noexcept;
    bool incRefIfAlive() noexcept;

    // The count comes last, so that a derived class can use what is left of its word.
    std::atomic<GcProxy*> _proxy{nullptr};
    std::atomic<std::uint32_t> _count{0};
};

// A reference that doesn't keep its object: the raw pointer and the control block.
template <class T>
class WeakRef {
public:
    WeakRef() noexcept = default;
    // Weak references to the object; null is one to nothing.
    explicit WeakRef(T* object) noexcept : _object(object), _proxy(object ? object->gcproxy() : nullptr)
    {
        if (_proxy)
            _proxy->incWeakRef();
    }
    WeakRef(const WeakRef& other) noexcept : _object(other._object), _proxy(other._proxy)
    {
        if (_proxy)
            _proxy->incWeakRef();
    }
    WeakRef& operator=(WeakRef other) noexcept
    {
        std::swap(_object, other._object);
        std::swap(_proxy, other._proxy);
        return *this;
    }
    ~WeakRef() noexcept
    {
        if (_proxy)
            _proxy->decWeakRef();
    }

    // The object, or null when it is gone or was never there.
    Ref<T> lock() const noexcept
    {
        return _proxy && _proxy->lockWeakRef() ? Ref<T>::adopt(_object) : Ref<T>();
    }

private:
    T* _object = nullptr;
    GcProxy* _proxy = nullptr;
};
