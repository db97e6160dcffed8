#pragma once

#include <platform/Windows_1252.h>

namespace Host {

// The byte that an element of a file stands for; -1 when it stands for none.
inline int byteOfElement(std::uint32_t element) noexcept
{
    using Libraries::Strings::Encodings::ANSI::Windows_1252;
    return Windows_1252::hasByte(element) ? Windows_1252::toByte(element) : -1;
}

} // namespace Host
