#include <gtest/gtest.h>

#include <tools/Help.h>

using Tools::HelpExtent;
using Tools::helpOf;

namespace {

constexpr Tools::Option own[] = {
    {"--mode", "MODE", "in a text that is longer than what is left of the line beside it:\nsecond line"},
    {"--encrypt-as", "FILE", "in the line after it"},
};
constexpr Tools::Option common[] = {{"--quick", "", "without a look"}, {"--slow", "", "with one"}};
const Tools::Program program = {
    .name = "try",
    .usage = "[options] IN [OUT]",
    .operandCount = 1,
    .about = "Tries.\n\n  an example   that is not broken, whatever the width of the screen, and goes on for long",
    .options = {{"", own}, {"common", common}},
    .refusedWhen = "it fails",
};

} // namespace

TEST(Help, breaksTextsAndNotExamples)
{
    EXPECT_EQ(helpOf(program, "files-pdf-try", HelpExtent::OneScreen),
        "Usage: files-pdf-try [options] IN [OUT]\n"
        "\n"
        "Tries.\n"
        "\n"
        "  an example   that is not broken, whatever the width of the screen, and goes on for long\n"
        "\n"
        "  --mode MODE    in a text that is longer than what is left of the line beside\n"
        "                 it:\n"
        "                 second line\n"
        "  --encrypt-as FILE\n"
        "                 in the line after it\n"
        "  --quick        without a look\n"
        "  --slow         with one\n"
        "\n"
        "Exit status: 0; 1 when it fails; 2 for wrong use and failures of the system.\n");
}

TEST(Help, whereOneScreenIsFullCommonOptionsAreOnlyNamed)
{
    Tools::Program longer = program; // by so many lines that all 23 are taken, and by one more
    const std::string fits = "it fails" + std::string(8, '\n');
    longer.refusedWhen = fits.c_str();
    EXPECT_EQ(helpOf(longer, "a", HelpExtent::OneScreen), helpOf(longer, "a", HelpExtent::All));
    const std::string over = fits + "\n";
    longer.refusedWhen = over.c_str();
    const std::string all = helpOf(longer, "a", HelpExtent::All);
    const std::string screen = helpOf(longer, "a", HelpExtent::OneScreen);
    EXPECT_NE(all.find("\n  --slow         with one\n"), all.npos);
    EXPECT_EQ(screen.find("with one"), screen.npos);
    EXPECT_NE(screen.find("\n  common         --quick, --slow; see --help-all\n"), screen.npos);
    EXPECT_NE(screen.find("\n  --encrypt-as FILE\n"), screen.npos);
}
