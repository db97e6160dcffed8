// Makes the fields of the form of a PDF file a part of its pages.

#include <tools/FileProgress.h>
#include <tools/Filling.h>
#include <tools/Hints.h>
#include <tools/ImportReport.h>
#include <tools/Json.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>
#include <tools/StandardFiles.h>

namespace {

constexpr Tools::Option ownOptions[] = {
    {"--field", "NAME", "only this field, or all beneath it; may be given several times"},
    {"--printed", "", "draw the fields that are printed, instead of those that are seen on the screen"},
    {"--json", "", "output for programs: what was done"},
};
const Tools::Program program = {
    .name = "flatten",
    .usage = "[options] IN OUT",
    .operandCount = 2,
    .about = "Draws the fields of the form of the PDF file IN on its pages, as viewers show them, takes them out of "
             "the form, and saves the whole as OUT, which may be the same file. Fields that are hidden go without "
             "being drawn. With --compact what belonged to them doesn't stay in the file.",
    .options
    = {{"", ownOptions}, Tools::textOptions(), Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "IN, a field, or the saving is refused",
};

void printJson(const Host::FlattenResult& done, const Tools::Opened& opened)
{
    std::string warnings;
    for (const std::string& warning : done.warnings)
        warnings += (warnings.empty() ? "" : ", ") + Tools::json(warning);
    std::printf("{\"fields\": %zu, \"widgets\": %zu, \"drawn\": %zu, \"pages\": %zu,\n\"warnings\": [%s],\n"
                "\"import\": %s}\n",
        done.fieldCount, done.widgetCount, done.drawnCount, done.pageCount, warnings.c_str(),
        Tools::importJson(opened).c_str());
}

int flatten(const Tools::CommandLine& line, const Tools::Console& console)
{
    const std::string& in = line.operand(0);
    if (line.has("--json") && Tools::isStandard(line.operand(1)))
        return console.misuse("standard output can't have both OUT and the JSON");
    const auto opened = Tools::Opening(line, console).open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    Host::FieldSelection which = Host::AllFields();
    if (line.has("--field"))
        which = line.arguments("--field");
    Host::FlattenOptions options = Tools::flattenOptionsOf(line);
    if (line.has("--printed"))
        options.medium = Host::Medium::Print;
    const auto done
        = Tools::withProgress("flattening", [&] { return Host::flatten(opened->document, which, options); });
    if (!done) {
        Host::Refusal refusal = done.refusal();
        if (refusal.reason == Host::Reason::Missing)
            refusal.message += Tools::fieldHint;
        return console.refuse(in, refusal);
    }
    for (const std::string& warning : done->warnings)
        console.warn(in, warning);
    const int status = Tools::Saving(line, console).save(*opened, in, line.operand(1));
    if (status != Tools::Done || !line.has("--json"))
        return status;
    printJson(*done, *opened);
    return console.finish();
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, flatten);
}
