// Puts pages of a PDF file beneath the pages of another.

#include <tools/BackgroundModes.h>
#include <tools/FileProgress.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>

namespace {

constexpr Tools::Option ownOptions[] = {
    {"--mode", "MODE",
        "first: the first page of FOREIGN beneath the first page;\n"
        "all, as without --mode: its first page beneath all pages;\n"
        "pairs: each page beneath the page of the same number;\n"
        "repeat-last: the same, and the last one beneath the rest"},
    {"--force", "", "go on where the preflight finds a reason not to"},
};
const Tools::Program program = {
    .name = "background",
    .usage = "[options] IN FOREIGN OUT",
    .operandCount = 3,
    .about = "Opens the PDF file IN, puts the content of pages of FOREIGN beneath that of its pages, and saves it as "
             "OUT, which may be one of the two. Refused when a page would be drawn with a wrong font or image; the "
             "message names it.",
    .options = {{"", ownOptions}, Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .exitStatus = "0; 1 when a file, the background, or the saving is refused; 2 for wrong use and unreadable files.",
};

int background(const Tools::CommandLine& line, const Tools::Console& console)
{
    const auto mode = Tools::modeNamed(line.argument("--mode", "all"));
    if (!mode)
        return console.misuse("unknown mode " + line.argument("--mode"));
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
    const auto done = Tools::withProgress("putting pages beneath",
        [&] { return Host::mergeBackground(opened->document, foreign->document, *mode, {line.has("--force")}); });
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
