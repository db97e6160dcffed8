#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Tools {

// An option that a program knows.
struct Option {
    const char* name;     // as it is given: "--values"
    const char* argument; // what the help calls its argument, which may follow it or a "=": "FILE"; empty for none
    const char* help;     // what it does. Lines are broken where they are full; "\n" breaks one earlier
};

// A program, as its command line is read and its help printed. Every program knows --help, or -h, besides its options.
struct Program {
    const char* name;          // the name that it has in its source; people see the one that it is called by
    const char* usage;         // what follows the name: "[options] IN OUT"
    std::size_t operandCount;  // how many operands it needs
    bool takesMoreOperands;    // whether others may follow these
    const char* about;         // what it does. A line that begins with a blank is printed as it is
    std::vector<std::span<const Option>> options; // in the order of the help; some groups are those of many programs
    const char* exitStatus;    // "0; 1 when ..."
};

} // namespace Tools
