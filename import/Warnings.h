#pragma once

#include <import/Qpdf.h>

#include <string_view>

namespace Import {

// Whether a warning tells of something that loses nothing: libqpdf made of it what the file says.
bool losesNothing(const QPDFExc& warning);

// What libqpdf said as one line of UTF-8, with the object and the offset that it said it about.
std::string messageOf(const QPDFExc& exception);
// The same of any other text.
std::string lineOf(std::string_view text);

} // namespace Import
