#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tools {

// A JSON string of a text in UTF-8.
std::string json(std::string_view text);
// One text, or a list where it isn't one.
std::string jsonOfTexts(const std::vector<std::string>& texts);

} // namespace Tools
