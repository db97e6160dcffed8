#include <gtest/gtest.h>

#include <tools/Help.h>

TEST(Help, breaksTextsAndNotExamples)
{
    constexpr Tools::Option own[] = {
        {"--mode", "MODE", "in a text that is longer than what is left of the line beside it:\nsecond line"},
        {"--encrypt-as", "FILE", "in the line after it"},
    };
    constexpr Tools::Option common[] = {{"--quick", "", "without a look"}};
    const Tools::Program program = {
        .name = "try",
        .usage = "[options] IN [OUT]",
        .operandCount = 1,
        .takesMoreOperands = false,
        .about = "Tries.\n\n  an example   that is not broken, whatever the width of the screen, and goes on for long",
        .options = {own, common},
        .exitStatus = "0; 1 when it fails",
    };
    EXPECT_EQ(Tools::helpOf(program, "files-pdf-try"),
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
        "\n"
        "Exit status: 0; 1 when it fails\n");
}
