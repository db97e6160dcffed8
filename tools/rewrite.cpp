// Opens a PDF file and writes the whole of it as a new one.

#include <tools/Command.h>

namespace {

const char help[] =
    "Usage: rewrite [options] IN OUT\n"
    "\n"
    "Opens the PDF file IN and saves it whole as OUT, which may be the same file.\n"
    "OUT is replaced only when the new file has been opened again and holds the same\n"
    "document.\n"
    "\n"
    SAVE_OPTIONS_HELP
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when IN, or the saving of it, is refused; 2 for wrong use and\n"
    "unreadable files.\n";

} // namespace

int main(int argc, char** argv)
{
    Tools::Command command("rewrite", help, 2, Tools::saveOptionNames);
    if (const auto status = command.parse(argc, argv))
        return *status;
    const std::string& in = command.operand(0);
    Host::Result<Host::OpenedFile> opened = Tools::open(in);
    if (!opened)
        return command.refuse(in, opened.refusal());
    return Tools::save(command, *opened, in, command.operand(1));
}
