// Opens a PDF file, makes itself independent of it, and saves the document over it.

#include <tools/Command.h>

namespace {

const char help[] =
    "Usage: save-in-place [options] FILE\n"
    "\n"
    "Opens the PDF file FILE, takes the data of all its streams into memory, and\n"
    "saves the document as FILE again. Before the save nothing of the old file is\n"
    "needed any more: it might be gone.\n"
    "\n"
    SAVE_OPTIONS_HELP
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when FILE, or the saving of it, is refused; 2 for wrong use\n"
    "and unreadable files.\n";

} // namespace

int main(int argc, char** argv)
{
    Tools::Command command("save-in-place", help, 1, Tools::saveOptionNames);
    if (const auto status = command.parse(argc, argv))
        return *status;
    const std::string& file = command.operand(0);
    Host::Result<Host::OpenedFile> opened = Tools::open(file);
    if (!opened)
        return command.refuse(file, opened.refusal());
    if (const auto status = Tools::checkLosses(command, opened->file, file))
        return *status;
    if (const auto refusal = Tools::withProgress("reading", [&opened] { return Host::detach(*opened); }))
        return command.refuse(file, *refusal);
    return Tools::save(command, *opened, file, file);
}
