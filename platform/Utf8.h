#pragma once

#include <platform/Export.h>

#include <string>
#include <string_view>

// Single characters as UTF-8 and back. An overlong form, a surrogate and a number above 0x10FFFF are no UTF-8.
class EXPORTED Utf8 {
public:
    // Appends the bytes of `c`; those of U+FFFD for what has no UTF-8.
    static void append(std::string& out, char32_t c) noexcept;
    // Takes the first character off `text`, which isn't empty. False, with `text` as it was, when it begins with
    // none.
    static bool read(std::string_view& text, char32_t& c) noexcept;
};
