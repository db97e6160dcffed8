// Opens a PDF file, makes itself independent of it, and saves the document over it.

#include <tools/FileProgress.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>

namespace {

const Tools::Program program = {
    .name = "save-in-place",
    .usage = "[options] FILE",
    .operandCount = 1,
    .about = "Opens the PDF file FILE, reads the data of all its streams into memory, and saves the document as FILE "
             "again. The save needs nothing of the old file any more: it might be gone by then.",
    .options = {Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "FILE, or the saving of it, is refused",
};

int saveInPlace(const Tools::CommandLine& line, const Tools::Console& console)
{
    const std::string& file = line.operand(0);
    auto opened = Tools::Opening(line, console).open(file);
    if (!opened)
        return console.refuse(file, opened.refusal());
    const Tools::Saving saving(line, console);
    if (const auto status = saving.checkContent(*opened, file))
        return *status;
    if (const auto refusal = Tools::withProgress("reading", [&opened] { return Host::detach(*opened, opened->limitFactor); }))
        return console.refuse(file, *refusal);
    return saving.save(*opened, file, file);
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, saveInPlace);
}
