#pragma once

#include <string>
#include <string_view>

namespace Tools {

// A JSON string of a text in UTF-8.
std::string json(std::string_view text);

} // namespace Tools
