#pragma once

#include <tools/Opening.h>

namespace Tools {

// What was done to a file that was imported, as an object of JSON; "null" for one that the core opened.
std::string importJson(const Opened& opened);

// What the import lost of a file, for people: "2 numbers rounded, first in object 7, /Rect 3". Empty when it lost
// nothing.
std::string importLosses(const Import::Report& report);

} // namespace Tools
