#pragma once

#include <tools/Program.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Tools {

// The options and operands that a program was given. Operands may come between options; everything after "--" is
// one, and so is "-". Of an option that is given twice the last counts, where nothing else is said.
class CommandLine {
public:
    using Arguments = std::span<const char* const>;

    explicit CommandLine(const Program& program);

    // Takes the arguments apart, those after the program's name. What is wrong with them, for people; empty when
    // nothing is. Where they ask about the program the operands aren't counted.
    std::string parse(Arguments arguments);
    // Whether the help, the version or the completion is wanted.
    bool isAboutProgram() const;

    // The program must declare the option; that goes for all that follows, too.
    bool has(std::string_view option) const;
    // All arguments of an option that has several, or that may be given several times, in their order.
    const std::vector<std::string>& arguments(std::string_view option) const;
    // The argument of an option; `fallback` when the option isn't given.
    std::string argument(std::string_view option, const char* fallback = "") const;
    // What is wrong when more than one of these is given; empty when nothing is.
    std::string conflictAmong(std::initializer_list<const char*> options) const;

    const std::string& operand(std::size_t index) const { return _operands[index]; }
    std::size_t operandCount() const { return _operands.size(); }

private:
    std::string takeOption(const std::string& spelled, Arguments& rest);
    const Option* find(std::string_view name) const;

    const Program& _program;
    std::map<std::string, std::vector<std::string>, std::less<>> _given; // arguments by option
    std::vector<std::string> _operands;
};

// A decimal number; none when the text is no number of 32 bits.
std::optional<std::uint32_t> numberOf(std::string_view text);

} // namespace Tools
