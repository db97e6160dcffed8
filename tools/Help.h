#pragma once

#include <tools/Program.h>

#include <string>

namespace Tools {

// What --help prints of a program that is called by this name, in lines of 80 columns. Manual pages are made of it.
std::string helpOf(const Program& program, const std::string& name);

} // namespace Tools
