#pragma once

#include <string>
#include <string_view>

namespace Tools {

// A JSON string of a text in UTF-8. What a terminal would obey (tools/ShownText.h) is escaped in it; bytes that are no
// UTF-8 stay.
std::string json(std::string_view text);

} // namespace Tools
