// Opens a PDF file and writes the whole of it as a new one.

#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>

namespace {

const Tools::Program program = {
    .name = "rewrite",
    .usage = "[options] IN OUT",
    .operandCount = 2,
    .about = "Opens the PDF file IN and saves it whole as OUT, which may be the same file. OUT is replaced only when "
             "the new file has been opened again and has the same document.",
    .options = {Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "IN, or the saving of it, is refused",
};

int rewrite(const Tools::CommandLine& line, const Tools::Console& console)
{
    const std::string& in = line.operand(0);
    const auto opened = Tools::Opening(line, console).open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    return Tools::Saving(line, console).save(*opened, in, line.operand(1));
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, rewrite);
}
