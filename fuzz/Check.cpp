#include "Check.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace Fuzz {

namespace {

// Operations that were passed over, told when the program ends.
struct PassedOver {
    std::uint64_t forElements = 0;
    std::uint64_t forClones = 0;

    ~PassedOver()
    {
        if (forElements + forClones != 0)
            std::fprintf(stderr, "passed over: %llu operations for their data, %llu for their clones\n",
                static_cast<unsigned long long>(forElements), static_cast<unsigned long long>(forClones));
    }
};

PassedOver passedOver;

// Takes what is asked for off what is left, or counts that there isn't enough.
bool take(std::uint64_t count, std::uint64_t& left, std::uint64_t& refused) noexcept
{
    if (count > left) {
        ++refused;
        return false;
    }
    left -= count;
    return true;
}

} // namespace

void require(bool holds, const char* promise) noexcept
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

void requireCode(const char* operation, std::initializer_list<std::uint32_t> codes) noexcept
{
    const std::uint32_t code = Error::get();
    if (std::find(codes.begin(), codes.end(), code) != codes.end())
        return;
    std::fprintf(stderr, "broken promise: %s leaves the code 0x%X\n", operation, code);
    std::abort();
}

bool Allowance::hasElements(std::uint64_t count) noexcept
{
    return take(count, _elements, passedOver.forElements);
}

bool Allowance::hasClones(std::uint64_t count) noexcept
{
    return take(count, _clones, passedOver.forClones);
}

} // namespace Fuzz
