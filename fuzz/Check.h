#pragma once

#include <platform/Error.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>

// What every target checks with, and the limits of what it asks for.
namespace Fuzz {

// Ends the program with these words when a promise of the library doesn't hold; what runs the input keeps it.
void require(bool holds, const char* promise) noexcept;
// The same for the code that a failure of `operation` left.
void requireCode(const char* operation, std::initializer_list<std::uint32_t> codes) noexcept;

// What an operation gives, which is true unless it failed. A failure must leave one of the codes.
template <class Work>
auto ask(const char* operation, std::initializer_list<std::uint32_t> codes, Work work) noexcept
{
    Error::set(0);
    auto result = work();
    if (!result)
        requireCode(operation, codes);
    return result;
}

// What one input may make the library do. Its data may grow as it wants, which the library bounds by memory
// alone; so each operation is forecast, and passed over when the input has no allowance left for it.
class Allowance {
public:
    // Whether the input can have so many more elements, of 4 bytes each, or so many more clones of values.
    bool hasElements(std::uint64_t count) noexcept;
    bool hasClones(std::uint64_t count) noexcept;

    static constexpr std::uint64_t mostElements = 100'000'000 / sizeof(std::uint32_t);
    static constexpr std::uint64_t mostClones = 100'000;

private:
    std::uint64_t _elements = mostElements;
    std::uint64_t _clones = mostClones;
};

} // namespace Fuzz

// What a target defines: it does with the input what it is there for. 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);
