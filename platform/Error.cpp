#include <platform/Error.h>

namespace {

thread_local std::uint32_t slot = 0;

} // namespace

void Error::set(std::uint32_t code) noexcept
{
    slot = code;
}

std::uint32_t Error::get() noexcept
{
    return slot;
}
