#pragma once

#include <string>
#include <string_view>

namespace Tools {

// Text for a terminal: a control character, which could move its cursor, is spelled as in a PDF string.
std::string shown(std::u32string_view text);
// The same for a text of the system, such as the name of a file, which need not be UTF-8.
std::string shown(const std::string& text);

} // namespace Tools
