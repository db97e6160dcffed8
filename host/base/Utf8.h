#pragma once

#include <platform/String.h>

#include <string>
#include <string_view>

namespace Host {

// People's text to the library's and back.

// Null, with `ErrInvalidArgument`, when the text is not wholly UTF-8; an overlong form, a surrogate
// and a number above 0x10FFFF are none.
EXPORTED Ref<::String> fromUtf8(std::string_view text) noexcept;
// What has no UTF-8, a lone surrogate or a number above 0x10FFFF, becomes U+FFFD; a null text is
// empty.
EXPORTED std::string toUtf8(const Ref<::String>& text) noexcept;
EXPORTED std::string toUtf8(std::u32string_view text) noexcept;

} // namespace Host
