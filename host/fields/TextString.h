#pragma once

#include <host/base/Result.h>
#include <values/Name.h>
#include <values/String.h>

#include <string>
#include <string_view>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Converts between the strings and names of a PDF file and text in UTF-8.

// The text of a string: UTF-16 or UTF-8 when it begins with the mark of one, else the
// document encoding of the standard. What is not a character becomes U+FFFD. Of a string of a file the bytes that
// it means count (`values/Exact.h`).
EXPORTED std::string textOf(const PDF::String& string) noexcept;
// The same for the bytes of a stream.
EXPORTED std::string textOfBytes(std::string_view bytes) noexcept;
// The text of a name, its "#" sequences decoded: UTF-8 if it is that, else the document encoding.
EXPORTED std::string textOfName(const ::String& name) noexcept;

// A string that every reader reads as `text` and that is read back as it was written: a literal where one
// can carry the text, else bytes, UTF-16 with its mark. Null with `ErrInvalidArgument` for what is not UTF-8.
EXPORTED Ref<PDF::String> stringOf(std::string_view text) noexcept;

// The length of a text in UTF-16 units, which is how `MaxLen` counts; `text` is UTF-8.
EXPORTED std::size_t lengthInUnits(std::string_view text) noexcept;

} // namespace Host
