#pragma once

#include <tools/Program.h>

#include <string>

namespace Tools {

enum class HelpExtent {
    OneScreen, // of 24 lines: options that don't fit are only named, a group at a time
    All,
};

// The help of a program that is called by this name, in lines of 80 columns. Manual pages are made of the whole.
std::string helpOf(const Program& program, const std::string& name, HelpExtent extent);

} // namespace Tools
