#pragma once

#include <text/Engine.h>

namespace Text {

// What the library shows to programs that load it while they run.
struct Entry {
    const char* version; // of the project; only a program of the same can use the rest
    decltype(&createEngine) create;
};

// Its name, as the linker has it.
constexpr const char* entryName = "filesPdfText";

} // namespace Text
