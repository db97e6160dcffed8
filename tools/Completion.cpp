#include <tools/Completion.h>

#include <algorithm>
#include <sstream>
#include <string_view>

namespace Tools {

namespace {

constexpr Option commonOptions[] = {
    {"--help", "", "what the program does"},
    {"--help-all", "", "all of it"},
    {"--version", "", "the version"},
};

std::vector<Option> optionsOf(const Program& program)
{
    std::vector<Option> options(std::begin(commonOptions), std::end(commonOptions));
    for (const OptionGroup& group : program.options)
        options.insert(options.end(), group.options.begin(), group.options.end());
    return options;
}

// "auto|never" as words; empty where the argument may be anything.
std::string choicesOf(const Option& option)
{
    std::string words = option.argument;
    if (words.find('|') == words.npos)
        return "";
    std::replace(words.begin(), words.end(), '|', ' ');
    return words;
}

std::string bashCompletionOf(const Program& program, const std::string& name)
{
    std::string function = "_" + name;
    std::replace(function.begin(), function.end(), '-', '_');
    std::string cases;
    std::string names;
    for (const Option& option : optionsOf(program)) {
        names.append(" ").append(option.name);
        if (const std::string choices = choicesOf(option); !choices.empty())
            cases.append("    ").append(option.name).append(") words='").append(choices).append("' ;;\n");
    }
    // An equals sign is a word of its own. Without an answer bash completes names of files.
    return function + "()\n{\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} words=\n"
        "    [[ $before == '=' && COMP_CWORD -gt 1 ]] && before=${COMP_WORDS[COMP_CWORD-2]}\n"
        "    [[ $word == '=' ]] && word=\n"
        "    case $before in\n" + cases + "    esac\n"
        "    [[ $word == -* ]] && words='" + names.substr(1) + "'\n"
        "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
        "}\ncomplete -o default -F " + function + " " + name + "\n";
}

// A text within the quotes and brackets of what zsh is told of an option.
std::string quoted(std::string_view text)
{
    std::string out;
    for (const char c : text)
        if (c == '\'')
            out += "'\\''";
        else if (c == '\n')
            out += ' ';
        else
            out.append(c == '[' || c == ']' || c == ':' || c == '\\' ? 1 : 0, '\\').append(1, c);
    return out;
}

std::string zshCompletionOf(const Program& program, const std::string& name)
{
    std::string out = "#compdef " + name + "\n_arguments";
    for (const Option& option : optionsOf(program)) {
        const std::string choices = choicesOf(option);
        std::string arguments = choices.empty() ? "" : ": :(" + choices + ")";
        std::istringstream words(choices.empty() ? option.argument : "");
        for (std::string word; words >> word;)
            arguments += ":" + quoted(word) + ":_files";
        out.append(" \\\n    '").append(option.name);
        out.append("[" + quoted(option.help) + "]" + arguments + "'");
    }
    return out + " \\\n    '*:file:_files'\n";
}

} // namespace

std::string completionOf(const Program& program, const std::string& name, const std::string& shell)
{
    return shell == "zsh" ? zshCompletionOf(program, name) : bashCompletionOf(program, name);
}

} // namespace Tools
