#pragma once

#include <string_view>
#include <vector>

namespace Host {

// The character that the name of a glyph means: by the list of names, or as in "uni20AC" and "u1F600"; 0 for none.
char32_t characterOfGlyph(std::string_view name) noexcept;
// The same in the font ZapfDingbats, whose names mean nothing elsewhere.
char32_t characterOfDingbat(std::string_view name) noexcept;

// The words of a table, which one blank each separates.
std::vector<std::string_view> wordsOf(std::string_view table) noexcept;

} // namespace Host
