// Fills the form of a PDF file.

#include <tools/Command.h>
#include <tools/FieldValues.h>

namespace {

using Tools::Command;
using Tools::FieldValues;

const char help[] =
    "Usage: fill [options] IN OUT [NAME=VALUE ...]\n"
    "\n"
    "Opens a PDF file, sets values of the fields of its form, and saves it as OUT,\n"
    "which may be the same file. `files-pdf-fields` prints the names, and what the\n"
    "fields take. A check box takes on, off or the name of a state; a list box with\n"
    "several choices takes NAME=VALUE once for each of them. When one value is\n"
    "refused nothing is saved.\n"
    "\n"
    "  --values FILE  values from a JSON object: from a name to a text, true, false,\n"
    "                 or a list of texts\n"
    "  --keep-looks   don't ask viewers to draw the new values\n"
    SAVE_OPTIONS_HELP
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when IN, a value, or the saving is refused; 2 for wrong use\n"
    "and unreadable files.\n";

// Adds the values of the command line, those of one name as a list; false when one has no "=" or is no UTF-8.
bool readOperands(const Command& command, FieldValues& values)
{
    std::map<std::string, std::vector<std::string>> texts;
    for (std::size_t i = 2; i < command.operandCount(); ++i) {
        const std::string& operand = command.operand(i);
        const std::size_t sign = operand.find('=');
        if (sign == operand.npos || !Host::fromUtf8(operand))
            return false;
        texts[operand.substr(0, sign)].push_back(operand.substr(sign + 1));
    }
    for (auto& [name, all] : texts)
        values.emplace_back(name, all.size() == 1 ? Host::FieldValue(all[0]) : Host::FieldValue(all));
    return true;
}

// Sets all values, and says of each that is refused why. The status to end with, unless all are set.
std::optional<int> fillAll(
    const Command& command, const std::string& in, Host::FormFiller& filler, const FieldValues& values)
{
    const auto appearances =
        command.has("--keep-looks") ? Host::Appearances::LeftAsTheyAre : Host::Appearances::DrawnByViewers;
    std::optional<int> status;
    for (const auto& [name, value] : values)
        if (auto refusal = filler.fill(name, value, appearances)) {
            refusal->words = name + ": " + refusal->words + Tools::fieldHint;
            status = command.refuse(in, *refusal);
        }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> options = Tools::saveOptionNames;
    options.insert(options.end(), {"--values=", "--keep-looks"});
    Command command("fill", help, 2, options, Command::Operands::More);
    if (const auto status = command.parse(argc, argv))
        return *status;
    FieldValues values;
    if (command.has("--values")) {
        auto read = Tools::readValues(command.argument("--values"));
        if (!read)
            return command.refuse(command.argument("--values"), read.refusal());
        values = std::move(*read);
    }
    if (!readOperands(command, values))
        return command.misuse("expected NAME=VALUE in UTF-8 behind IN and OUT");
    const std::string& in = command.operand(0);
    Host::Result<Host::OpenedFile> opened = Tools::open(in);
    if (!opened)
        return command.refuse(in, opened.refusal());
    Host::Result<Host::FormFiller> filler = Host::FormFiller::create(opened->document);
    if (!filler)
        return command.refuse(in, filler.refusal());
    if (const auto status = fillAll(command, in, *filler, values))
        return *status;
    for (const std::string& warning : filler->warnings())
        command.warn(in, warning);
    return Tools::save(command, *opened, in, command.operand(1));
}
