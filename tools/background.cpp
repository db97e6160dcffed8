// Puts pages of a PDF file beneath the pages of another.

#include <tools/BackgroundModes.h>
#include <tools/Command.h>

namespace {

const char help[] =
    "Usage: background [options] IN FOREIGN OUT\n"
    "\n"
    "Opens the PDF file IN, puts the content of pages of FOREIGN beneath that of its\n"
    "pages, and saves it as OUT, which may be one of the two. Refused when a page\n"
    "would be drawn with a wrong font or image, with the page and the name.\n"
    "\n"
    "  --mode MODE    first: the first page of FOREIGN beneath the first page;\n"
    "                 all, as without --mode: its first page beneath all pages;\n"
    "                 pairs: each page beneath the page of the same number;\n"
    "                 repeat-last: the same, and the last one beneath the rest\n"
    "  --force        go on where the look beforehand finds a reason not to\n"
    SAVE_OPTIONS_HELP
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when a file, the background, or the saving is refused; 2 for\n"
    "wrong use and unreadable files.\n";

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> options = Tools::saveOptionNames;
    options.insert(options.end(), {"--mode=", "--force"});
    Tools::Command command("background", help, 3, options);
    if (const auto status = command.parse(argc, argv))
        return *status;
    const auto mode = Tools::modeNamed(command.has("--mode") ? command.argument("--mode") : "all");
    if (!mode)
        return command.misuse("there is no mode " + command.argument("--mode"));
    const std::string& in = command.operand(0);
    Host::Result<Host::OpenedFile> opened = Tools::open(in);
    if (!opened)
        return command.refuse(in, opened.refusal());
    Host::Result<Host::OpenedFile> foreign = Tools::open(command.operand(1));
    if (!foreign)
        return command.refuse(command.operand(1), foreign.refusal());
    if (const auto status = Tools::checkLosses(command, foreign->file, command.operand(1)))
        return *status; // what lies beneath goes into the new file, too
    const auto done = Tools::withProgress("putting pages beneath",
        [&] { return Host::background(opened->document, foreign->document, *mode, {command.has("--force")}); });
    if (!done)
        return command.refuse(in, done.refusal());
    for (const std::string& warning : done->warnings)
        command.warn(in, warning);
    return Tools::save(command, *opened, in, command.operand(2));
}
