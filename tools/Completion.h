#pragma once

#include <tools/Program.h>

#include <string>

namespace Tools {

// What a shell, "bash" or "zsh", reads to complete the options of a program that is called by this name, and what they
// may be. Everything else is completed as the name of a file.
std::string completionOf(const Program& program, const std::string& name, const std::string& shell);

} // namespace Tools
