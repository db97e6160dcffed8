// Fills the form of a PDF file.

#include <host/base/Utf8.h>
#include <tools/FieldValues.h>
#include <tools/Filling.h>
#include <tools/Hints.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>

#include <map>

namespace {

using Tools::CommandLine;
using Tools::Console;
using Tools::FieldValues;

constexpr Tools::Option ownOptions[] = {
    {"--values", "FILE", "values from a JSON object that maps names to a text, true, false or a list of texts"},
};
const Tools::Program program = {
    .name = "fill",
    .usage = "[options] IN OUT [NAME=VALUE ...]",
    .operandCount = 2,
    .takesMoreOperands = true,
    .about = "Opens a PDF file, sets values of the fields of its form, and saves it as OUT, which may be the same "
             "file. `files-pdf-fields` prints the names, and what the fields take. A check box takes on, off or the "
             "name of a state; a list box with several choices takes NAME=VALUE once for each of them. When one value "
             "is refused, nothing is saved.",
    .options = {{"", ownOptions}, Tools::fillOptions(), Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .exitStatus = "0; 1 when IN, a value, or the saving is refused; 2 for wrong use and unreadable files.",
};

// Adds the values of the command line, those of one name as a list; false when one has no "=" or is not UTF-8.
bool readOperands(const CommandLine& line, FieldValues& values)
{
    std::map<std::string, std::vector<std::string>> texts;
    for (std::size_t i = 2; i < line.operandCount(); ++i) {
        const std::string& operand = line.operand(i);
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
std::optional<int> fillAll(const Console& console, const std::string& in, Host::FormFiller& filler,
    const FieldValues& values, const Host::FillOptions& options)
{
    std::optional<int> status;
    for (const auto& [name, value] : values)
        if (auto refusal = filler.fill(name, value, options)) {
            refusal->message = name + ": " + refusal->message + Tools::fieldHint;
            status = console.refuse(in, *refusal);
        }
    return status;
}

int fill(const CommandLine& line, const Console& console)
{
    const auto options = Tools::fillOptionsOf(line);
    if (!options)
        return console.misuse(options.refusal().message);
    FieldValues values;
    if (line.has("--values")) {
        auto read = Tools::readValues(line.argument("--values"));
        if (!read)
            return console.refuse(line.argument("--values"), read.refusal());
        values = std::move(*read);
    }
    if (!readOperands(line, values))
        return console.misuse("expected NAME=VALUE in UTF-8 after IN and OUT");
    const std::string& in = line.operand(0);
    const auto opened = Tools::Opening(line, console).open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    auto filler = Host::FormFiller::create(opened->document);
    if (!filler)
        return console.refuse(in, filler.refusal());
    if (const auto status = fillAll(console, in, *filler, values, *options))
        return *status;
    if (const auto refusal = filler->finish())
        return console.refuse(in, *refusal);
    std::vector<std::string> warnings = filler->warnings();
    if (line.has("--flatten")) {
        const auto flattened
            = Host::flatten(opened->document, Host::AllFields(), Tools::flattenOptionsOf(line));
        if (!flattened)
            return console.refuse(in, flattened.refusal());
        Tools::addWarnings(warnings, flattened->warnings);
    }
    for (const std::string& warning : warnings)
        console.warn(in, warning);
    return Tools::Saving(line, console).save(*opened, in, line.operand(1));
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, fill);
}
