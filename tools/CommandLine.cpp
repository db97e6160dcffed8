#include <tools/CommandLine.h>

#include <algorithm>
#include <cassert>
#include <charconv>

namespace Tools {

namespace {

constexpr Option commonOptions[] = {
    {"--help", "", ""}, {"--help-all", "", ""}, {"--version", "", ""}, {"--completion", "bash|zsh", ""}};

const Option* findAmong(std::span<const Option> options, std::string_view name)
{
    const auto found = std::find_if(
        options.begin(), options.end(), [name](const Option& option) { return name == option.name; });
    return found == options.end() ? nullptr : &*found;
}

// How many arguments it has: the help calls each by a word.
std::size_t argumentCount(const Option& option)
{
    const std::string_view names = option.argument;
    return names.empty() ? 0 : 1 + std::size_t(std::count(names.begin(), names.end(), ' '));
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
    if (!isAboutProgram() && (_operands.size() < _program.operandCount || isTooMany))
        return std::string("expected ") + _program.usage;
    return "";
}

// What is wrong with the option; empty when it was taken, and with it the next arguments if it needs them.
std::string CommandLine::takeOption(const std::string& spelled, Arguments& rest)
{
    const std::size_t sign = spelled.find('=');
    const bool hasArgument = sign != spelled.npos;
    const std::string name = spelled == "-h" ? "--help" : spelled.substr(0, sign);
    const Option* option = find(name);
    if (!option)
        return "unknown option " + name;
    std::size_t missing = argumentCount(*option);
    if (hasArgument && missing == 0)
        return name + " takes no argument";
    if (rest.size() + hasArgument < missing)
        return name + (missing == 1 ? " needs an argument" : std::string(" needs ") + option->argument);
    std::vector<std::string>& given = _given[name];
    if (hasArgument) {
        given.push_back(spelled.substr(sign + 1));
        --missing;
    }
    given.insert(given.end(), rest.begin(), rest.begin() + std::ptrdiff_t(missing));
    rest = rest.subspan(missing);
    return given.empty() || isChoice(option->argument, given.back()) ? "" : name + " takes " + option->argument;
}

// Null when the program has no such option.
const Option* CommandLine::find(std::string_view name) const
{
    const Option* found = findAmong(commonOptions, name);
    for (const OptionGroup& group : _program.options)
        if (!found)
            found = findAmong(group.options, name);
    return found;
}

bool CommandLine::isAboutProgram() const
{
    return std::any_of(std::begin(commonOptions), std::end(commonOptions),
        [this](const Option& option) { return has(option.name); });
}

bool CommandLine::has(std::string_view option) const
{
    assert(find(option));
    return _given.find(option) != _given.end();
}

std::string CommandLine::argument(std::string_view option, const char* fallback) const
{
    const std::vector<std::string>& given = arguments(option);
    return given.empty() ? fallback : given.back();
}

const std::vector<std::string>& CommandLine::arguments(std::string_view option) const
{
    static const std::vector<std::string> none;
    return has(option) ? _given.find(option)->second : none;
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
