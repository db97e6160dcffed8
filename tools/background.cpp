// Draws pages of a PDF file on the pages of another, as letterheads and stamps.

#include <tools/FileProgress.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Placements.h>
#include <tools/Saving.h>

namespace {

const Tools::Program program = {
    .name = "background",
    .usage = "[options] IN FOREIGN OUT",
    .operandCount = 3,
    .about = "Draws pages of FOREIGN beneath those of the PDF file IN, made to fit and upright as viewers show "
             "them, and saves it as OUT, which may be one of the two.",
    .options = {Tools::placementOptions()[0], Tools::placementOptions()[1], Tools::placementOptions()[2],
        Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "a file, the drawing, or the saving is refused",
};

// What the options say; the exit status where they can't be.
std::optional<int> readOptions(const Tools::CommandLine& line, const Tools::Console& console, Tools::PagesAsked& asked)
{
    for (const Tools::OptionGroup& group : Tools::placementOptions())
        for (const Tools::Option& option : group.options) {
            const std::string name = std::string(option.name).substr(2);
            if (!line.has(option.name))
                continue;
            if (const auto refusal = Tools::ask(asked, name, line.argument(option.name)))
                return console.misuse(refusal->message);
            if (line.has("--merged") && name != "merged" && name != "mode" && name != "force")
                return console.misuse("--merged and --" + name + " don't go together");
        }
    return {};
}

int background(const Tools::CommandLine& line, const Tools::Console& console)
{
    Tools::PagesAsked asked;
    if (const auto status = readOptions(line, console, asked))
        return *status;
    if (console.name() == "files-pdf-stamp")
        asked.placement.layer = Host::Layer::Above;
    const std::string& in = line.operand(0);
    const Tools::Opening opening(line, console);
    const auto opened = opening.open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    const auto foreign = opening.open(line.operand(1));
    if (!foreign)
        return console.refuse(line.operand(1), foreign.refusal());
    const Tools::Saving saving(line, console);
    if (const auto status = saving.checkContent(*foreign, line.operand(1)))
        return *status; // its content goes into the new file, too
    asked.placement.limitFactor = opened->limitFactor;
    const auto done = Tools::withProgress("drawing pages",
        [&] { return Tools::drawPages(opened->document, foreign->document, asked); });
    if (!done)
        return console.refuse(in, done.refusal());
    for (const std::string& warning : done->warnings)
        console.warn(in, warning);
    return saving.save(*opened, in, line.operand(2));
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, background);
}
