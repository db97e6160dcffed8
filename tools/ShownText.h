#pragma once

#include <string>
#include <string_view>

namespace Tools {

// Whether a terminal obeys the character instead of showing it: a control character, one that changes the direction of
// the text after it, breaks a line, or takes no room. The two that join letters in some scripts are not among them.
bool isObeyed(char32_t c);

// Text for a terminal, in which such a character is spelled: as in a PDF string up to 255 (\033), by its number above
// (\u{202E}).
std::string shown(std::u32string_view text);
// The same for a text of the system, such as the name of a file, which need not be UTF-8.
std::string shown(const std::string& text);

} // namespace Tools
