#pragma once

#include <import/OpenAny.h>
#include <import/Save.h>

namespace Import {

// What the library shows to programs that load it while they run.
struct Entry {
    const char* version; // of the project; only a program of the same can use the rest
    Door open;
    decltype(&Import::save) save;
};

// Its name, as the linker has it.
constexpr const char* entryName = "filesPdfImport";

} // namespace Import
