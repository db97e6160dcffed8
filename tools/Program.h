#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Tools {

// An option that a program knows.
struct Option {
    const char* name;     // as it is given: "--values"
    const char* argument; // what the help calls its argument, which may follow it or a "=": "FILE"; empty for none. A
                          // "|" is between all that it may be: "auto|never". One of several has a word for each
    const char* help;     // what it does. Lines are broken where they are full; "\n" breaks one earlier
};

// Options that belong together, often those of many programs.
struct OptionGroup {
    const char* title; // what they are about, where the help has no room for each; empty when each is to be told
    std::span<const Option> options;
};

// A program, as its command line is read and its help printed. Besides its options every program knows --help, or -h,
// --help-all, --version, and --completion for the build.
struct Program {
    const char* name;                 // as it is called in the sources; people see the name that it was called by
    const char* usage;                // what follows the name: "[options] IN OUT"
    std::size_t operandCount = 0;     // how many operands it needs
    bool takesMoreOperands = false;   // whether others may follow these
    const char* about;                // what it does. A line that begins with a blank is printed as it is
    std::vector<OptionGroup> options; // in the order of the help
    const char* refusedWhen;          // when it ends with status 1: "FILE is refused"
};

} // namespace Tools
