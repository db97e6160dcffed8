// Fills the form of a PDF file.

#include <host/base/Utf8.h>
#include <tools/FieldValues.h>
#include <tools/Filling.h>
#include <tools/Hints.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>
#include <tools/ValueRows.h>

#include <algorithm>

namespace {

using Tools::CommandLine;
using Tools::Console;
using Tools::FieldValues;

constexpr Tools::Option ownOptions[] = {
    {"--values", "FILE", "values from JSON, FDF, XFDF or CSV, as files-pdf-fields --format prints them"},
    {"--field", "NAME VALUE", "the same as NAME=VALUE, also for a name with \"=\""},
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
    .options = {{"", ownOptions}, Tools::valueOptions(), Tools::fillOptions(), Tools::openOptions(),
        Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "IN, a value, or the saving is refused",
};

// Adds the values of the command line, those of one name as a list; false when one has no "=" or is not UTF-8. They
// count before those of a file.
bool readOperands(const CommandLine& line, FieldValues& values)
{
    Tools::NamedTexts texts;
    const std::vector<std::string>& fields = line.arguments("--field");
    for (std::size_t i = 0; i < fields.size(); i += 2)
        texts[fields[i]].push_back(fields[i + 1]);
    for (std::size_t i = 2; i < line.operandCount(); ++i) {
        const std::string& operand = line.operand(i);
        const std::size_t sign = operand.find('=');
        if (sign == operand.npos)
            return false;
        texts[operand.substr(0, sign)].push_back(operand.substr(sign + 1));
    }
    for (const auto& [name, all] : texts)
        if (!Host::fromUtf8(name) || !std::all_of(all.begin(), all.end(), &Host::fromUtf8))
            return false;
    for (auto& [name, value] : Tools::valuesOf(texts))
        values.insert_or_assign(name, value);
    return true;
}

// Sets all values, and says of each that is refused or passed over why. The status to end with, unless all others are
// set.
std::optional<int> fillAll(const CommandLine& line, const Console& console, Host::FormFiller& filler,
    const FieldValues& values, const Host::FillOptions& options)
{
    const std::string& in = line.operand(0);
    const auto unknown = line.has("--skip-unknown") ? Tools::UnknownFields::Skipped : Tools::UnknownFields::Refused;
    std::vector<std::string> warnings;
    std::optional<int> status;
    for (Host::Refusal& refusal : Tools::fillAll(filler, values, options, unknown, warnings)) {
        refusal.message += Tools::fieldHint;
        status = console.refuse(in, refusal);
    }
    for (const std::string& warning : warnings)
        console.warn(in, warning);
    return status;
}

int fill(const CommandLine& line, const Console& console)
{
    const auto options = Tools::fillOptionsOf(line);
    if (!options)
        return console.misuse(options.refusal().message);
    auto values = line.has("--values") ? Tools::readValues(line.argument("--values"), line) : FieldValues();
    if (!values)
        return console.refuse(line.argument("--values"), values.refusal());
    if (!readOperands(line, *values))
        return console.misuse("expected NAME=VALUE in UTF-8 after IN and OUT");
    const std::string& in = line.operand(0);
    if (values->empty())
        console.warn(in, "no value is given, and nothing is filled");
    const auto opened = Tools::Opening(line, console).open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    auto filler = Host::FormFiller::create(opened->document, opened->limitFactor);
    if (!filler)
        return console.refuse(in, filler.refusal());
    if (const auto status = fillAll(line, console, *filler, *values, *options))
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
