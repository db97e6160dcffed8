#include <tools/CommandLine.h>

#include <algorithm>
#include <cassert>
#include <charconv>

namespace Tools {

namespace {

constexpr Option helpOptions[] = {{"--help", "", ""}, {"--help-all", "", ""}};

const Option* findAmong(std::span<const Option> options, std::string_view name)
{
    const auto found = std::find_if(
        options.begin(), options.end(), [name](const Option& option) { return name == option.name; });
    return found == options.end() ? nullptr : &*found;
}

// Whether the argument is one of those that the help lists, as "auto|never"; where it lists none, any is.
bool isChoice(std::string_view choices, std::string_view argument)
{
    if (choices.find('|') == choices.npos)
        return true;
    while (!choices.empty()) {
        const std::size_t end = std::min(choices.find('|'), choices.size());
        if (choices.substr(0, end) == argument)
            return true;
        choices.remove_prefix(std::min(end + 1, choices.size()));
    }
    return false;
}

} // namespace

CommandLine::CommandLine(const Program& program) : _program(program) {}

std::string CommandLine::parse(Arguments arguments)
{
    bool areOptionsOver = false;
    while (!arguments.empty()) {
        const std::string argument = arguments.front();
        arguments = arguments.subspan(1);
        if (areOptionsOver || argument.size() < 2 || argument[0] != '-')
            _operands.push_back(argument);
        else if (argument == "--")
            areOptionsOver = true;
        else if (std::string fault = takeOption(argument, arguments); !fault.empty())
            return fault;
    }
    const bool isTooMany = _operands.size() > _program.operandCount && !_program.takesMoreOperands;
    if (!isHelpWanted() && (_operands.size() < _program.operandCount || isTooMany))
        return std::string("expected ") + _program.usage;
    return "";
}

// What is wrong with the option; empty when it was taken, and with it the next argument if it needs one.
std::string CommandLine::takeOption(const std::string& spelled, Arguments& rest)
{
    const std::size_t sign = spelled.find('=');
    const bool hasArgument = sign != spelled.npos;
    const std::string name = spelled == "-h" ? "--help" : spelled.substr(0, sign);
    const Option* option = find(name);
    if (!option)
        return "unknown option " + name;
    const bool takesArgument = *option->argument;
    if (hasArgument && !takesArgument)
        return name + " takes no argument";
    if (takesArgument && !hasArgument && rest.empty())
        return name + " needs an argument";
    std::string& argument = _given[name].emplace_back();
    if (hasArgument) {
        argument = spelled.substr(sign + 1);
    } else if (takesArgument) {
        argument = rest.front();
        rest = rest.subspan(1);
    }
    return isChoice(option->argument, argument) ? "" : name + " takes " + option->argument;
}

// Null when the program has no such option.
const Option* CommandLine::find(std::string_view name) const
{
    const Option* found = findAmong(helpOptions, name);
    for (const OptionGroup& group : _program.options)
        if (!found)
            found = findAmong(group.options, name);
    return found;
}

bool CommandLine::isHelpWanted() const
{
    return has("--help") || has("--help-all");
}

bool CommandLine::has(std::string_view option) const
{
    assert(find(option));
    return _given.find(option) != _given.end();
}

std::string CommandLine::argument(std::string_view option, const char* fallback) const
{
    return has(option) ? _given.find(option)->second.back() : fallback;
}

std::vector<std::string> CommandLine::arguments(std::string_view option) const
{
    return has(option) ? _given.find(option)->second : std::vector<std::string>();
}

std::string CommandLine::conflictAmong(std::initializer_list<const char*> options) const
{
    const char* first = nullptr;
    for (const char* option : options) {
        if (!has(option))
            continue;
        if (first)
            return std::string(first) + " and " + option + " don't go together";
        first = option;
    }
    return "";
}

std::optional<std::uint32_t> numberOf(std::string_view text)
{
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace Tools
