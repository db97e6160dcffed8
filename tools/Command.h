#pragma once

#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>
#include <host/losses/Examine.h>
#include <host/saving/Save.h>
#include <platform/StrConv.h>
#include <platform/SysLog.h>
#include <tools/Console.h>
#include <tools/FileProgress.h>
#include <tools/Hints.h>
#include <tools/Opening.h>
#include <tools/Saving.h>
#include <tools/ShownText.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

// What the example programs share: their command line, their exit status and how they refuse.
namespace Tools {

// The command line of one run. Every program knows --help, or -h, and -v besides its own options.
class Command {
public:
    enum class Operands { Exact, More };
    // `help` is what --help prints, and begins with "Usage: " and the name; `operands` is how many there have
    // to be, and `More` lets others follow them. An option that ends in "=" takes an argument, behind it or in it.
    Command(std::string name, const char* help, std::size_t operands, std::vector<std::string> options,
        Operands further = Operands::Exact)
        : _name(std::move(name)), _help(help), _operandCount(operands), _further(further),
          _options(std::move(options))
    {
        _options.insert(_options.end(), {"--help", "-v"});
        // A limit of file sizes and a reader that went away are failed writes, not the end.
        std::signal(SIGXFSZ, SIG_IGN);
        std::signal(SIGPIPE, SIG_IGN);
    }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    // With -v, the library's log lines come last.
    ~Command()
    {
        SysLogStream::setSink({});
        for (const std::string& line : _log)
            std::fprintf(stderr, "%s\n", line.c_str());
    }

    // The status to end with at once, or none.
    std::optional<int> parse(int argc, char** argv)
    {
        const std::string rest = std::string(_help).substr(std::string("Usage: " + _name).size());
        if (argc > 0)
            _name = std::filesystem::path(argv[0]).filename(); // the name that it is installed by
        bool areOptionsOver = false;
        for (char** next = argv + std::min(argc, 1); *next;) {
            const std::string argument = *next++;
            if (areOptionsOver || argument.size() < 2 || argument[0] != '-')
                _operands.push_back(argument);
            else if (argument == "--")
                areOptionsOver = true;
            else if (const std::string trouble = takeOption(argument, next); !trouble.empty())
                return misuse(trouble);
        }
        if (has("--help")) {
            std::printf("Usage: %s%s", _name.c_str(), rest.c_str());
            return finish();
        }
        if (_operands.size() < _operandCount
            || (_operands.size() > _operandCount && _further == Operands::Exact))
            return misuse("expected" + rest.substr(0, rest.find('\n')));
        if (has("-v"))
            keepLog();
        return {};
    }

    bool has(const std::string& option) const { return _given.count(option) > 0; }
    const std::string& operand(std::size_t index) const { return _operands[index]; }
    std::size_t operandCount() const { return _operands.size(); }
    // The argument of an option that was given.
    const std::string& argument(const std::string& option) const { return _given.at(option); }
    // The argument of an option, or an operand, as the number of an object; none when it is no such number.
    std::optional<std::uint32_t> number(const std::string& option) const { return numberOf(_given.at(option)); }
    std::optional<std::uint32_t> number(std::size_t operand) const { return numberOf(_operands[operand]); }

    int misuse(const std::string& words) const { return Console(_name).misuse(words); }
    int refuse(const std::string& file, const Host::Refusal& refusal) const
    {
        return Console(_name).refuse(file, refusal);
    }
    void warn(const std::string& file, const std::string& words) const { Console(_name).warn(file, words); }
    int finish() const { return Console(_name).finish(); }

private:
    static std::optional<std::uint32_t> numberOf(const std::string& text)
    {
        unsigned value = 0;
        if (!StrConv::num(::String::create(text.c_str()), &value, nullptr))
            return {};
        return value;
    }

    // What is wrong with the option; empty when it was taken, and with it the argument at `next` if it needs one.
    std::string takeOption(const std::string& argument, char**& next)
    {
        const std::size_t sign = argument.find('=');
        const bool hasArgument = sign != argument.npos;
        const std::string option = argument == "-h" ? "--help" : argument.substr(0, sign);
        if (isKnown(option)) {
            _given[option];
            return hasArgument ? option + " takes no argument" : "";
        }
        if (!isKnown(option + "="))
            return "unknown option " + option;
        if (!hasArgument && !*next)
            return option + " needs an argument";
        _given[option] = hasArgument ? argument.substr(sign + 1) : *next++;
        return "";
    }

    bool isKnown(const std::string& option) const
    {
        return std::find(_options.begin(), _options.end(), option) != _options.end();
    }

    void keepLog()
    {
        SysLogFilter::setLevel(1);
        SysLogFilter::enable("PDF", true);
        SysLogFilter::enable("Lib.File.PDF.Form", true);
        SysLogStream::setSink([this](std::size_t, const Ref<::String>& line) {
            std::u32string characters;
            line->forEach([&characters](char32_t c) { characters += c; });
            _log.push_back(shown(characters));
        });
    }

    std::string _name;
    const char* const _help;
    const std::size_t _operandCount;
    const Operands _further;
    std::vector<std::string> _options;
    std::map<std::string, std::string> _given;
    std::vector<std::string> _operands;
    std::vector<std::string> _log;
};

// The options of every program that saves, and the lines of its help about them.
inline const std::vector<std::string> saveOptionNames = {"--unverified", "--partial", "--strict"};
#define SAVE_OPTIONS_HELP \
    "  --strict       refuse what `files-pdf-inspect --losses` lists\n" \
    "  --unverified   don't compare the new file with the document\n" \
    "  --partial      save also what is only in part in memory: without a catalog,\n" \
    "                 updated, encrypted, or changed on the disk meanwhile\n"

// Says in one line what saving loses of the file, if anything. With --strict that is the end, and the status
// comes back.
inline std::optional<int> checkLosses(const Command& command, const Ref<Host::FileStripe>& file, const std::string& in)
{
    const auto losses = withProgress("examining", [&] { return lossesOf(file); });
    if (losses && command.has("--strict"))
        return command.refuse(in, *losses);
    if (losses)
        command.warn(in, losses->words);
    return {};
}

// Saves what was opened from `in` as `out`, by the options given, and gives the status. The losses of a document
// that doesn't hold its file any more were checked before.
inline int save(const Command& command, const Host::OpenedFile& opened, const std::string& in, const std::string& out)
{
    if (opened.file)
        if (const auto status = checkLosses(command, opened.file, in))
            return *status;
    Host::SaveOptions options;
    options.isUnverified = command.has("--unverified");
    options.isPartialAllowed = command.has("--partial");
    auto saved = withProgress("saving", [&] { return Host::save(opened, out, options); });
    if (!saved) {
        Host::Refusal refusal = saved.refusal();
        refusal.words = "can't be saved as " + out + ": " + refusal.words + partialHint(saved.refusal());
        return command.refuse(in, refusal);
    }
    if (saved->durability == Host::Durability::Unknown)
        command.warn(out, "was written, but its folder can't be synced");
    return command.finish();
}

} // namespace Tools
