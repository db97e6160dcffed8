#pragma once

#include <host/base/Result.h>
#include <platform/Export.h>

#include <string>
#include <string_view>

namespace Libraries::Files::PDF {
class Object;
}

namespace Host {

// What a code of the library means, in words: "the first line is missing or empty".
// A code that the library doesn't have gives "unknown error".
EXPORTED std::string_view errorWords(std::uint32_t code) noexcept;
// The code as people write it: "0x507".
EXPORTED std::string codeText(std::uint32_t code) noexcept;

// A refusal for a code that the library left in `Error`: with the reason that belongs to it, and the words for it
// after `prefix` as the message.
EXPORTED Refusal codeRefusal(std::uint32_t code, std::string_view prefix = {}) noexcept;
// A refusal for an error of the system, as `errno` holds it: "can't be opened: Permission denied". Where there is
// no room for what is to be written, the reason is `OutOfSpace` instead.
EXPORTED Refusal systemRefusal(Reason reason, std::string_view what, int systemError) noexcept;

// "object 12", and the generation if it isn't 0.
EXPORTED std::string nameOf(const Libraries::Files::PDF::Object& object) noexcept;

} // namespace Host
