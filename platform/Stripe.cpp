#include <platform/Stripe.h>

#include <platform/Reporter.h>

namespace Interfaces {

SharedHandle Data::shareOut(Ref<SharedMemory>) noexcept
{
    Error::set(ErrNotSupported);
    return {};
}

SharedHandle Data::shareIn(SharedHandle) noexcept
{
    Error::set(ErrNotSupported);
    return {};
}

std::uint64_t Stream::skipRead(std::uint64_t, std::uint32_t) noexcept
{
    return moveNothing(ErrNotSupported);
}

std::uint64_t Stream::skipWrite(std::uint64_t, std::uint32_t) noexcept
{
    return moveNothing(ErrNotSupported);
}

std::uint64_t Extent::capacity() const noexcept
{
    return size();
}

std::uint64_t Extent::limit() const noexcept
{
    return size();
}

std::uint64_t Extent::resize(std::uint64_t) noexcept
{
    Error::set(ErrNotSupported);
    return size();
}

} // namespace Interfaces
