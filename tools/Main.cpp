#include <tools/Main.h>

#include <tools/Completion.h>
#include <tools/Help.h>
#include <tools/LogKeeping.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace Tools {

namespace {

// What the options ask about the program.
std::string textAbout(const Program& program, const std::string& name, const CommandLine& line)
{
    if (line.has("--version"))
        return name + " (FilesPDF) " FILES_PDF_VERSION "\n";
    if (line.has("--completion"))
        return completionOf(program, name, line.argument("--completion"));
    return helpOf(program, name, line.has("--help-all") ? HelpExtent::All : HelpExtent::OneScreen);
}

} // namespace

int run(const Program& program, int argc, char** argv, Work work)
{
    std::signal(SIGXFSZ, SIG_IGN); // a limit of file sizes is a failed write, not the end
    const std::string name = argc > 0 ? std::filesystem::path(argv[0]).filename().string() : program.name;
    const Console console(name);
    CommandLine line(program);
    const std::size_t skipped = std::min(argc, 1);
    if (const std::string fault = line.parse({argv + skipped, std::size_t(argc) - skipped}); !fault.empty())
        return console.misuse(fault);
    if (line.isAboutProgram()) {
        std::fputs(textAbout(program, name, line).c_str(), stdout);
        return console.finish();
    }
    const LogKeeping log(line.has("-v"));
    return work(line, Console(name, &log));
}

} // namespace Tools
