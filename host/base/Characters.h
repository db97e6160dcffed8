#pragma once

#include <platform/Windows_1252.h>

#include <string>
#include <string_view>

namespace Host {

// The byte that an element of a file represents; -1 when it represents none.
inline int byteOfElement(std::uint32_t element) noexcept
{
    using Libraries::Strings::Encodings::ANSI::Windows_1252;
    return Windows_1252::hasByte(element) ? Windows_1252::toByte(element) : -1;
}

// The value of a hexadecimal digit; -1 for any other character.
int hexDigit(int c) noexcept;

// The name that is written like this in a file, without its solidus: "Pr#65v" is Prev.
std::string decodedName(std::string_view written) noexcept;
// Whether it is this one.
bool isSameName(std::string_view written, std::string_view name) noexcept;

} // namespace Host
