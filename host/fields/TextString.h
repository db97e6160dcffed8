#pragma once

#include <host/base/Result.h>
#include <values/Name.h>
#include <values/String.h>

#include <string>
#include <string_view>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Between the strings and names of a PDF file and people's text, which is UTF-8.

// The text that a string stands for: UTF-16 or UTF-8 when it begins with the mark of one, else the
// document encoding of the standard. What stands for no character becomes U+FFFD. Bytes that the reader of
// literal strings doesn't keep, raw ones from 128 to 159, come out as another character.
EXPORTED std::string textOf(const PDF::String& string) noexcept;
// The same for bytes that stand in a stream.
EXPORTED std::string textOfBytes(std::string_view bytes) noexcept;
// The text of a name, its "#" sequences decoded: UTF-8 if it is that, else the document encoding.
EXPORTED std::string textOfName(const ::String& name) noexcept;

// A string that every reader takes for `text` and that comes back as it was written: a literal where one
// can carry the text, else bytes, UTF-16 with its mark. Null with `ErrInvalidArgument` for what is no UTF-8.
EXPORTED Ref<PDF::String> stringOf(std::string_view text) noexcept;

// The length of a text in UTF-16 units, which is how `MaxLen` counts; `text` is UTF-8.
EXPORTED std::size_t lengthInUnits(std::string_view text) noexcept;

} // namespace Host
