#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tools {

// A JSON string of a text in UTF-8. What a terminal would obey (tools/ShownText.h) is escaped in it; bytes that are no
// UTF-8 stay.
std::string json(std::string_view text);
// One text, or a list where it isn't one.
std::string jsonOfTexts(const std::vector<std::string>& texts);

} // namespace Tools
