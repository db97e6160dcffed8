#include <tools/Help.h>

#include <algorithm>
#include <string_view>

namespace Tools {

namespace {

constexpr std::size_t screenWidth = 80;
constexpr std::ptrdiff_t screenHeight = 24;
constexpr std::size_t textColumn = 17; // where the texts of options begin

constexpr const char* unusableWhen = "2 for wrong use and failures of the system.";

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

// A label and its text; where the label takes the room of the text, that begins in the next line.
std::string describe(const std::string& label, const std::string& text)
{
    std::string out = "  " + label;
    if (out.size() + 2 > textColumn)
        out += "\n" + std::string(textColumn, ' ');
    else
        out.resize(textColumn, ' ');
    return out + wrap(text, textColumn) + "\n";
}

std::string describeEach(const OptionGroup& group)
{
    std::string out;
    for (const Option& option : group.options)
        out += describe(std::string(option.name) + (*option.argument ? " " : "") + option.argument, option.help);
    return out;
}

std::string nameAll(const OptionGroup& group)
{
    std::string names;
    for (const Option& option : group.options)
        names.append(names.empty() ? "" : ", ").append(option.name);
    return describe(group.title, names + "; see --help-all");
}

std::string compose(const Program& program, const std::string& name, HelpExtent extent)
{
    std::string out = "Usage: " + name + " " + program.usage + "\n\n" + wrap(program.about, 0) + "\n\n";
    for (const OptionGroup& group : program.options)
        out += extent == HelpExtent::All || !*group.title ? describeEach(group) : nameAll(group);
    const std::string refusedWhen = program.refusedWhen;
    return out + "\n" + wrap("Exit status: 0; 1 when " + refusedWhen + "; " + unusableWhen, 0) + "\n";
}

} // namespace

std::string helpOf(const Program& program, const std::string& name, HelpExtent extent)
{
    const std::string all = compose(program, name, HelpExtent::All);
    const bool fits = std::count(all.begin(), all.end(), '\n') < screenHeight; // the last line is the shell's
    return fits ? all : compose(program, name, extent);
}

} // namespace Tools
