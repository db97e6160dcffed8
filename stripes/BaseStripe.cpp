#include <stripes/BaseStripe.h>

namespace Libraries::Adapters::Base {

std::uint64_t Stripe::elementSize() const noexcept
{
    return _wrapped->elementSize();
}

SharedHandle Stripe::shareOut(Ref<SharedMemory> memory) noexcept
{
    return _wrapped->shareOut(std::move(memory));
}

SharedHandle Stripe::shareIn(SharedHandle handle) noexcept
{
    return _wrapped->shareIn(std::move(handle));
}

std::uint64_t Stripe::read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    BufferDesc copy = area;
    return _wrapped->read(copy, count, timeout);
}

std::uint64_t Stripe::write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    BufferDesc copy = area;
    return _wrapped->write(copy, count, timeout);
}

std::uint64_t Stripe::skipRead(std::uint64_t count, std::uint32_t timeout) noexcept
{
    return _wrapped->skipRead(count, timeout);
}

std::uint64_t Stripe::skipWrite(std::uint64_t count, std::uint32_t timeout) noexcept
{
    return _wrapped->skipWrite(count, timeout);
}

std::uint64_t Stripe::size() const noexcept
{
    return _wrapped->size();
}

std::uint64_t Stripe::capacity() const noexcept
{
    return _wrapped->capacity();
}

std::uint64_t Stripe::limit() const noexcept
{
    return _wrapped->limit();
}

std::uint64_t Stripe::resize(std::uint64_t count) noexcept
{
    return _wrapped->resize(count);
}

std::uint64_t Stripe::seek(std::uint64_t position) noexcept
{
    return _wrapped->seek(position);
}

std::uint64_t Stripe::tell() const noexcept
{
    return _wrapped->tell();
}

} // namespace Libraries::Adapters::Base
