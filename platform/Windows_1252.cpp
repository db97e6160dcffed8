#include <platform/Windows_1252.h>

#include <algorithm>

namespace Libraries::Strings::Encodings::ANSI {

namespace {

constexpr std::uint32_t firstUpper = 128;

// The byte from 128 to 159 whose row holds the code point; 0 when there is none.
std::uint8_t upperByte(std::uint32_t codePoint)
{
    const auto row = std::find(upperControls.begin(), upperControls.end(), codePoint);
    return row == upperControls.end() ? 0 : static_cast<std::uint8_t>(firstUpper + (row - upperControls.begin()));
}

} // namespace

std::uint8_t Windows_1252::byte(std::uint32_t codePoint) const noexcept
{
    if (codePoint < 256)
        return static_cast<std::uint8_t>(codePoint);
    const std::uint8_t found = upperByte(codePoint);
    return found ? found : '?';
}

std::uint32_t Windows_1252::codePoint(std::uint8_t byte) const noexcept
{
    if (byte < firstUpper || byte >= firstUpper + upperControls.size() || upperControls[byte - firstUpper] == 0)
        return byte;
    return upperControls[byte - firstUpper];
}

bool Windows_1252::hasByte(std::uint32_t codePoint) noexcept
{
    if (codePoint >= 256)
        return upperByte(codePoint) != 0;
    return codePoint < firstUpper || codePoint >= firstUpper + upperControls.size()
        || upperControls[codePoint - firstUpper] == 0;
}

} // namespace Libraries::Strings::Encodings::ANSI
