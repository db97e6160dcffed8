#include <platform/Object.h>

#include <platform/Pool.h>
#include <platform/String.h>

#include <typeinfo>

void GcProxy::incWeakRef() noexcept
{
    _weakCount.fetch_add(1, std::memory_order_relaxed);
}

void GcProxy::decWeakRef() noexcept
{
    if (_weakCount.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

Object* GcProxy::lockWeakRef() noexcept
{
    // The lock keeps the object's memory in place while its count is looked at: `detach` waits.
    const std::lock_guard guard(_lock);
    return _object && _object->incRefIfAlive() ? _object : nullptr;
}

void GcProxy::detach() noexcept
{
    {
        const std::lock_guard guard(_lock);
        _object = nullptr;
    }
    decWeakRef();
}

void* Object::operator new(std::size_t size) noexcept
{
    return Pool::alloc(size);
}

void Object::operator delete(void* memory, std::size_t size) noexcept
{
    Pool::free(memory, size);
}

GcProxy* Object::gcproxy() noexcept
{
    GcProxy* proxy = _proxy.load(std::memory_order_acquire);
    if (proxy)
        return proxy;
    auto* fresh = new GcProxy(this);
    if (_proxy.compare_exchange_strong(proxy, fresh, std::memory_order_acq_rel))
        return fresh;
    delete fresh;
    return proxy;
}

bool Object::incRefIfAlive() noexcept
{
    std::uint32_t count = _count.load(std::memory_order_relaxed);
    while (count && !_count.compare_exchange_weak(count, count + 1, std::memory_order_acq_rel)) {
    }
    return count != 0;
}

void Object::dropCount() noexcept
{
    if (_count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        destroy();
}

void Object::destroy() noexcept
{
    if (GcProxy* proxy = _proxy.load(std::memory_order_acquire))
        proxy->detach();
    delete this;
}

Ref<String> Object::_dump() const noexcept
{
    return String::create(typeid(*this).name());
}

bool Object::_selfTest() const noexcept
{
    return counterRef() > 0;
}

Ref<String> Object::dump() const noexcept
{
    return _dump();
}

bool Object::selfTest() const noexcept
{
    return _selfTest();
}
