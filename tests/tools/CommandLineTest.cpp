#include <gtest/gtest.h>

#include <tools/CommandLine.h>

namespace {

using Tools::CommandLine;

constexpr Tools::Option own[] = {{"--mode", "MODE", ""}, {"--way", "in|out", ""}, {"--pair", "A B", ""}};
constexpr Tools::Option common[] = {{"--quick", "", ""}, {"--quickly", "", ""}};
const Tools::Program program = {
    .name = "try",
    .usage = "[options] IN",
    .operandCount = 1,
    .takesMoreOperands = false,
    .about = "",
    .options = {{"", own}, {"common", common}},
    .refusedWhen = "it fails",
};

// What is wrong, or else the operands and the mode.
std::string parsed(const Tools::Program& by, std::vector<const char*> arguments)
{
    CommandLine line(by);
    std::string out = line.parse(arguments);
    if (!out.empty())
        return out;
    for (std::size_t i = 0; i < line.operandCount(); ++i)
        out += line.operand(i) + ";";
    for (const std::string& each : line.arguments("--pair"))
        out += each + "/";
    return out + line.argument("--mode", "none") + (line.has("--quick") ? ";quick" : "")
        + line.conflictAmong({"--mode", "--quickly", "--quick"});
}

} // namespace

TEST(CommandLine, takesArgumentsApart)
{
    const struct {
        std::vector<const char*> arguments;
        const char* result;
    } cases[] = {
        {{"a"}, "a;none"},
        {{"--mode", "x", "a"}, "a;x"},
        {{"a", "--mode=x=y"}, "a;x=y"},
        {{"--mode=", "a"}, "a;"},
        {{"--mode", "--quick", "a"}, "a;--quick"},
        {{"--mode=x", "a", "--mode=y"}, "a;y"},
        {{"-"}, "-;none"},
        {{""}, ";none"},
        {{"--", "--quick"}, "--quick;none"},
        {{"--mode", "--", "a"}, "a;--"},
        {{"--quick", "--quickly", "a"}, "a;none;quick--quickly and --quick don't go together"},
        {{"--help"}, "none"},
        {{"--help-all"}, "none"},
        {{"-h", "a", "b", "c"}, "a;b;c;none"},
        {{"a", "--mode"}, "--mode needs an argument"},
        {{"--pair", "x=y", "--quick", "a", "--pair=z", ""}, "a;x=y/--quick/z//none"},
        {{"a", "--pair", "x"}, "--pair needs A B"},
        {{"a", "--way", "out"}, "a;none"},
        {{"a", "--way=in|out"}, "--way takes in|out"},
        {{"a", "--way="}, "--way takes in|out"},
        {{"a", "--quick=1"}, "--quick takes no argument"},
        {{"a", "--help=1"}, "--help takes no argument"},
        {{"--mod=x", "a"}, "unknown option --mod"},
        {{"-x", "a"}, "unknown option -x"},
        {{"--mode x", "a"}, "unknown option --mode x"},
        {{}, "expected [options] IN"},
        {{"a", "b"}, "expected [options] IN"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(parsed(program, each.arguments), each.result);
    Tools::Program more = program;
    more.takesMoreOperands = true;
    EXPECT_EQ(parsed(more, {"a", "b", "c"}), "a;b;c;none");
    EXPECT_EQ(parsed(more, {}), "expected [options] IN");
}

TEST(CommandLine, numbersAreWholeAndFit)
{
    EXPECT_EQ(Tools::numberOf("0"), 0u);
    EXPECT_EQ(Tools::numberOf("4294967295"), 4294967295u);
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "0x1", "1.0", "4294967296"})
        EXPECT_FALSE(Tools::numberOf(text)) << text;
}
