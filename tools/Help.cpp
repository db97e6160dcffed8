#include <tools/Help.h>

#include <algorithm>
#include <string_view>

namespace Tools {

namespace {

constexpr std::size_t screenWidth = 80;
constexpr std::size_t textColumn = 17; // where the texts of options begin

// A line of text broken at blanks where it is full; the lines after the first begin in column `indent`.
std::string wrapLine(std::string_view line, std::size_t indent)
{
    std::string out;
    const std::size_t width = screenWidth - indent;
    while (line.size() > width) {
        std::size_t end = line.rfind(' ', width);
        if (end == line.npos)
            end = std::min(line.find(' '), line.size()); // a word that is too long
        out.append(line.substr(0, end)).append("\n").append(indent, ' ');
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return out.append(line);
}

// The same for a text of several lines. One that begins with a blank stays as it is.
std::string wrap(std::string_view text, std::size_t indent)
{
    std::string out;
    for (;;) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        out += line.starts_with(' ') ? std::string(line) : wrapLine(line, indent);
        if (end == text.npos)
            return out;
        text.remove_prefix(end + 1);
        out.append("\n").append(text.starts_with('\n') ? 0 : indent, ' ');
    }
}

// An option and its text; where the option takes the room of the text, that begins in the next line.
std::string describe(const Option& option)
{
    std::string out = std::string("  ") + option.name + (*option.argument ? " " : "") + option.argument;
    out += out.size() + 2 > textColumn ? "\n" + std::string(textColumn, ' ') : std::string(textColumn - out.size(), ' ');
    return out + wrap(option.help, textColumn) + "\n";
}

} // namespace

std::string helpOf(const Program& program, const std::string& name)
{
    std::string out = "Usage: " + name + " " + program.usage + "\n\n" + wrap(program.about, 0) + "\n\n";
    for (const auto& group : program.options)
        for (const Option& option : group)
            out += describe(option);
    return out + "\n" + wrap(std::string("Exit status: ") + program.exitStatus, 0) + "\n";
}

} // namespace Tools
