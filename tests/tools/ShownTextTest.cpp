#include <tools/ShownText.h>

#include <tools/Json.h>

#include <gtest/gtest.h>

TEST(ShownText, spellsWhatATerminalObeys)
{
    EXPECT_EQ(Tools::shown(U"a\x1B[31m\x7F\x9B\xA0\xE9"), "a\\033[31m\\177\\233\u00A0\u00E9");
    EXPECT_EQ(Tools::shown(U"\u202E\u2066\u200B\u2028\uFEFF\U000E0041"),
        "\\u{202E}\\u{2066}\\u{200B}\\u{2028}\\u{FEFF}\\u{E0041}");
    EXPECT_EQ(Tools::shown(U"\u0645\u06CC\u200C\u062E"), "\u0645\u06CC\u200C\u062E") << "letters that are joined or not";
}

TEST(Json, escapesWhatATerminalObeysAndNothingElse)
{
    EXPECT_EQ(Tools::json("a\"\\\n\u0085\u202E\U000E0041\u00E9\U0001F600"),
        "\"a\\\"\\\\\\u000a\\u0085\\u202e\\udb40\\udc41\u00E9\U0001F600\"");
    EXPECT_EQ(Tools::json("\xFFx\xC2"), "\"\xFFx\xC2\"") << "no UTF-8";
}
