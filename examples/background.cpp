// Puts pages of a PDF file beneath the pages of another.

#include <examples/Command.h>
#include <host/Background.h>

namespace {

using Host::PDF::BackgroundMode;

const char help[] =
    "Usage: background [options] IN FOREIGN OUT\n"
    "\n"
    "Opens the PDF file IN, puts the content of pages of FOREIGN beneath that of its pages, and saves it as\n"
    "OUT, which may be one of the two. Refused when a page would be drawn with a wrong font or image, with\n"
    "the page and the name.\n"
    "\n"
    "  --mode first        the first page of FOREIGN beneath the first page\n"
    "  --mode all          the first page of FOREIGN beneath all pages, as without --mode\n"
    "  --mode pairs        each page of FOREIGN beneath the page of the same number\n"
    "  --mode repeat-last  the same, and the last one beneath all pages that are left\n"
    "  --force             go on where the look beforehand finds a reason not to\n" SAVE_OPTIONS_HELP
    "  -v                  print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when a file, the background, or the saving is refused; 2 for wrong use and\n"
    "unreadable files.\n";

std::optional<BackgroundMode> modeOf(const Examples::Command& command)
{
    const std::map<std::string, BackgroundMode> modes = {
        {"first", BackgroundMode::FirstPageOnly},
        {"all", BackgroundMode::AllPages},
        {"pairs", BackgroundMode::PagePairs},
        {"repeat-last", BackgroundMode::PagePairsRepeatLast},
    };
    const auto found = modes.find(command.has("--mode") ? command.argument("--mode") : "all");
    return found == modes.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> options = Examples::saveOptions;
    options.insert(options.end(), {"--mode=", "--force"});
    Examples::Command command("background", help, 3, options);
    if (const auto status = command.parse(argc, argv))
        return *status;
    const auto mode = modeOf(command);
    if (!mode)
        return command.misuse("there is no mode " + command.argument("--mode"));
    const std::string& in = command.operand(0);
    Host::Result<Host::OpenedFile> opened = Host::open(in);
    if (!opened)
        return command.refuse(in, opened.refusal());
    Host::Result<Host::OpenedFile> foreign = Host::open(command.operand(1));
    if (!foreign)
        return command.refuse(command.operand(1), foreign.refusal());
    const auto done = Host::background(opened->document, foreign->document, *mode, {command.has("--force")});
    if (!done)
        return command.refuse(in, done.refusal());
    for (const std::string& warning : done->warnings)
        std::fprintf(
            stderr, "background: %s: warning: %s\n", Examples::shown(in).c_str(), Examples::shown(warning).c_str());
    return Examples::save(command, *opened, in, command.operand(2));
}
