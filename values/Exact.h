#pragma once

#include <values/Value.h>

#include <optional>
#include <vector>

namespace Libraries::Files::PDF {

class Number;
class String;

// What values are by the PDF format. `Number` and `String` tell what this library's reading makes of them, which is
// something else for 1.05, -0.5, (a\\b), <5> and more; values remember what it loses. What an application made is
// what it becomes in an exact file (document/ExactWriting.h).

// The number in decimal digits, as few as there can be: -0.5, 1.05 and 5 for -.50, 01.05 and 5.0. Null for a word
// of a file that is a number to this library alone, such as 1.-5. Sets no code.
EXPORTED Ref<::String> exactDecimal(const Number& number) noexcept;
// The nearest floating-point number; not a number (NaN) where there is no decimal one.
EXPORTED double exactDouble(const Number& number) noexcept;
// The bytes of the string; none when a character of it has no byte, or it has neither text nor bytes. Sets no code.
EXPORTED std::optional<std::vector<std::uint8_t>> exactBytes(const String& string) noexcept;
// Whether the two are the same in an exact file, for the format and for this library: numbers digit by digit, so that
// 1.5 and 1.50 differ, and so do .5 and 0.5. Deep; of streams the dictionaries are compared. False when one is null.
EXPORTED bool isSameExactly(const Ref<Value>& a, const Ref<Value>& b) noexcept;

} // namespace Libraries::Files::PDF
