#include <gtest/gtest.h>

#include <tools/JsonInput.h>

namespace {

using namespace Tools;

std::string read(const std::string& text, Digits digits = Digits::All)
{
    const auto value = readJson(text, digits);
    return value ? value->dump() : value.refusal().message;
}

} // namespace

TEST(JsonInput, numbersAreTheirDigits)
{
    EXPECT_EQ(read("{\"a\": 1.10, \"b\": [-0, 1e5, 12345678901234567890123], \"c\": -7}"),
        "{\"a\":\"1.10\",\"b\":[\"-0\",\"1e5\",\"12345678901234567890123\"],\"c\":\"-7\"}");
    EXPECT_EQ(read("{\"id\": 7, \"fill\": {\"a\": 1.0, \"b\": [2]}, \"in\": 3}", Digits::UnderFill),
        "{\"fill\":{\"a\":\"1.0\",\"b\":[\"2\"]},\"id\":7,\"in\":3}");
}

TEST(JsonInput, whatIsWrongIsToldWithItsPlace)
{
    const std::pair<std::string, const char*> cases[] = {
        {"{\n  \"\xC3\xA4\": x}", "line 2, column 8: syntax error"},
        {"{\"a\": 1,\n \"a\": 2}", "line 2, column 4: the key a is there twice"},
        {"{\"f\": {\"a\": 1, \"a\": 2}}", "line 1, column 18: the key a is there twice"},
        {"{\"a\": \"\xFF\"}", "line 1, column 8: syntax error"},
        {"{\"a\": \"\\ud800\"}", "line 1, column 14: syntax error"},
        {"", "line 1, column 1: syntax error"},
        {"{} x", "line 1, column 4: syntax error"},
        {"[]", "line 1, column 1: the text is no JSON object"},
        {"17", "line 1, column 2: the text is no JSON object"},
        {std::string(200000, '['), "line 1, column 1: the text is no JSON object"},
        {"{\"a\": " + std::string(200000, '['), "line 1, column 10: values are nested too deep"},
    };
    for (const auto& [text, message] : cases)
        EXPECT_TRUE(read(text).starts_with(message)) << read(text).substr(0, 300) << "\n" << message;
    EXPECT_TRUE(read("{\"a\": 1\xAC}").ends_with("invalid literal")) << read("{\"a\": 1\xAC}");
    EXPECT_LT(read("{\"a\": \"" + std::string(100000, 'x')).size(), 400u);
}
