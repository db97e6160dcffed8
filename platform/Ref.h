#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

// The counted smart pointer. A null `Ref` is valid and common. Results and arguments pass by value; a `Ref`
// that is not needed afterwards is moved, since each copy counts: atomically, unless `isSingleThreaded`.
template <class T>
class Ref {
public:
    Ref() noexcept = default;
    // Null, or one count more of an object. A copy adds a count; a moved `Ref` hands its own on and is null.
    Ref(std::nullptr_t) noexcept {}
    explicit Ref(T* object) noexcept : _object(object)
    {
        if (_object)
            _object->incRef();
    }
    Ref(const Ref& other) noexcept : Ref(other._object) {}
    Ref(Ref&& other) noexcept : _object(std::exchange(other._object, nullptr)) {}
    template <class U>
        requires(std::is_convertible_v<U*, T*>)
    Ref(const Ref<U>& other) noexcept : Ref(static_cast<T*>(other.get()))
    {
    }
    template <class U>
        requires(std::is_convertible_v<U*, T*>)
    Ref(Ref<U>&& other) noexcept : _object(other.release())
    {
    }
    ~Ref() noexcept
    {
        if (_object)
            _object->decRef();
    }

    // Lets go of what it had.
    Ref& operator=(Ref other) noexcept
    {
        std::swap(_object, other._object);
        return *this;
    }

    // Takes over a count that the caller holds already.
    static Ref adopt(T* object) noexcept
    {
        Ref result;
        result._object = object;
        return result;
    }
    // Gives the object away with its count; the `Ref` is null afterwards.
    T* release() noexcept { return std::exchange(_object, nullptr); }

    // The object, without a count for the caller; null when there is none, which `*` and `->` must not be used on.
    T* get() const noexcept { return _object; }
    T* operator->() const noexcept { return _object; }
    T& operator*() const noexcept { return *_object; }
    explicit operator bool() const noexcept { return _object != nullptr; }

    // The same object seen as another class; null when it is none.
    template <class U>
    Ref<U> cast() const noexcept
    {
        return Ref<U>(dynamic_cast<U*>(_object));
    }

    // Two references are equal when they lead to the same object.
    template <class U>
    bool operator==(const Ref<U>& other) const noexcept
    {
        return _object == other.get();
    }
    bool operator==(std::nullptr_t) const noexcept { return _object == nullptr; }

private:
    T* _object = nullptr;
};

// A new object of class `T`, held by the result alone.
template <class T, class... Arguments>
Ref<T> make(Arguments&&... arguments) noexcept
{
    T* object = new T(std::forward<Arguments>(arguments)...);
    object->T::incRef();
    return Ref<T>::adopt(object);
}
