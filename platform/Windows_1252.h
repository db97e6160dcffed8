#pragma once

#include <platform/Object.h>

#include <array>

namespace Libraries::Strings::Encodings::ANSI {

// The code points of the bytes 128 to 159; 0 at the five that Windows-1252 leaves undefined.
inline constexpr std::array<std::uint32_t, 32> upperControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// The Windows-1252 encoding. The five undefined bytes stand for the code points of the same number,
// both ways, so that every byte has one code point and survives.
class EXPORTED Windows_1252 final : public Object {
public:
    // The argument, true everywhere, asks for this treatment of undefined bytes; there is no other.
    explicit Windows_1252(bool) noexcept {}

    // The byte of a code point. One without a byte gives its own low 8 bits below 256, else "?".
    virtual std::uint8_t byte(std::uint32_t codePoint) const noexcept { return toByte(codePoint); }
    // The code point of a byte.
    virtual std::uint32_t codePoint(std::uint8_t byte) const noexcept { return toCodePoint(byte); }

    // The same without an object, for loops.
    static std::uint8_t toByte(std::uint32_t codePoint) noexcept
    {
        return codePoint < bytes.size() ? bytes[codePoint] : '?';
    }
    static std::uint32_t toCodePoint(std::uint8_t byte) noexcept { return codePoints[byte]; }
    // Whether a code point has a byte of its own.
    static bool hasByte(std::uint32_t codePoint) noexcept
    {
        return codePoint < bytes.size() && toCodePoint(toByte(codePoint)) == codePoint;
    }

private:
    static constexpr std::array<std::uint32_t, 256> makeCodePoints() noexcept
    {
        std::array<std::uint32_t, 256> result{};
        for (std::uint32_t byte = 0; byte < result.size(); ++byte) {
            const bool isUpper = byte >= 128 && byte < 128 + upperControls.size() && upperControls[byte - 128] != 0;
            result[byte] = isUpper ? upperControls[byte - 128] : byte;
        }
        return result;
    }
    // By code point, up to the highest that has a byte; what `toByte` gives.
    static constexpr std::array<std::uint8_t, 0x2123> makeBytes() noexcept
    {
        std::array<std::uint8_t, 0x2123> result{};
        for (std::size_t codePoint = 0; codePoint < result.size(); ++codePoint)
            result[codePoint] = codePoint < 256 ? static_cast<std::uint8_t>(codePoint) : '?';
        for (std::size_t row = 0; row < upperControls.size(); ++row)
            if (upperControls[row] != 0)
                result[upperControls[row]] = static_cast<std::uint8_t>(128 + row);
        return result;
    }

    static const std::array<std::uint32_t, 256> codePoints;
    static const std::array<std::uint8_t, 0x2123> bytes;
};

inline constexpr std::array<std::uint32_t, 256> Windows_1252::codePoints = Windows_1252::makeCodePoints();
inline constexpr std::array<std::uint8_t, 0x2123> Windows_1252::bytes = Windows_1252::makeBytes();

} // namespace Libraries::Strings::Encodings::ANSI
