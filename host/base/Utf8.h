#pragma once

#include <platform/String.h>

#include <string>
#include <string_view>

namespace Host {

// Between text in UTF-8 and the library's.

// Null, with `ErrInvalidArgument`, when the text is not wholly UTF-8, which excludes overlong forms, surrogates
// and numbers above 0x10FFFF.
EXPORTED Ref<::String> fromUtf8(std::string_view text) noexcept;
// What has no UTF-8, a lone surrogate or a number above 0x10FFFF, becomes U+FFFD; a null text is
// empty.
EXPORTED std::string toUtf8(const Ref<::String>& text) noexcept;
EXPORTED std::string toUtf8(std::u32string_view text) noexcept;

// The beginning of a text in UTF-8, of whole characters that have at most so many bytes.
inline std::string_view beginningOf(std::string_view text, std::size_t maxSize) noexcept
{
    if (text.size() <= maxSize)
        return text;
    while (maxSize > 0 && (text[maxSize] & 0xC0) == 0x80)
        --maxSize;
    return text.substr(0, maxSize);
}

} // namespace Host
