#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace Fuzz {

// Takes an input apart from its front. At its end every number is 0 and every text empty.
class Input {
public:
    Input(const std::uint8_t* bytes, std::size_t size) noexcept
        : _left(reinterpret_cast<const char*>(bytes), size)
    {
    }

    bool isAtEnd() const noexcept { return _left.empty(); }
    std::uint8_t byte() noexcept { return static_cast<std::uint8_t>(number(1)); }
    // A number of so many bytes, the lowest first.
    std::uint64_t number(std::size_t byteCount) noexcept
    {
        std::uint64_t result = 0;
        const std::string_view digits = text(byteCount);
        for (std::size_t i = 0; i < digits.size(); ++i)
            result |= std::uint64_t(static_cast<std::uint8_t>(digits[i])) << (8 * i);
        return result;
    }
    // A number that is small, or one of those that are close to the limits of their type.
    std::uint64_t anyNumber() noexcept
    {
        const std::uint8_t first = byte();
        return first < 0xF0 ? first : number(8);
    }
    // Up to so many bytes.
    std::string_view text(std::size_t size) noexcept
    {
        const std::string_view result = _left.substr(0, size);
        _left.remove_prefix(result.size());
        return result;
    }
    std::string_view rest() noexcept { return text(_left.size()); }

private:
    std::string_view _left;
};

} // namespace Fuzz
