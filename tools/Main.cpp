#include <tools/Main.h>

#include <tools/Help.h>
#include <tools/LogKeeping.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace Tools {

int run(const Program& program, int argc, char** argv, Work work)
{
    std::signal(SIGXFSZ, SIG_IGN); // a limit of file sizes is a failed write, not the end
    const std::string name = argc > 0 ? std::filesystem::path(argv[0]).filename().string() : program.name;
    const Console console(name);
    CommandLine line(program);
    const std::size_t skipped = std::min(argc, 1);
    if (const std::string fault = line.parse({argv + skipped, std::size_t(argc) - skipped}); !fault.empty())
        return console.misuse(fault);
    if (line.isHelpWanted()) {
        const auto extent = line.has("--help-all") ? HelpExtent::All : HelpExtent::OneScreen;
        std::fputs(helpOf(program, name, extent).c_str(), stdout);
        return console.finish();
    }
    std::optional<LogKeeping> log;
    if (line.has("-v"))
        log.emplace();
    return work(line, console);
}

} // namespace Tools
