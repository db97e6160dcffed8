#pragma once

#include <tools/CommandLine.h>
#include <tools/Console.h>

namespace Tools {

// What a program does for its command line; its exit status.
using Work = int (*)(const CommandLine& line, const Console& console);

// What all programs have in common: takes the command line apart, answers --help and wrong use, and has the work done.
int run(const Program& program, int argc, char** argv, Work work);

} // namespace Tools
