#include <host/fonts/GlyphNames.h>

#include <gtest/gtest.h>

using namespace Host;

TEST(FontData, namesOfGlyphsMeanCharacters)
{
    const std::pair<const char*, char32_t> cases[] = {
        {"A", 'A'}, {"zukatakana", 0x30BA}, {"afii10017", 0x410}, {"Euro", 0x20AC}, {"space", ' '}, {"mu", 0xB5},
        {"uni20AC", 0x20AC}, {"uni20ac", 0x20AC}, {"uni20A", 0}, {"uni20AC0041", 0}, {"uniD800", 0}, {"union", 0x222A},
        {"u1F600", 0x1F600}, {"u20AC", 0x20AC}, {"u110000", 0}, {"u20", 0}, {"u1F6000", 0}, {"", 0}, {" ", 0},
        {"AE 00C6", 0}, {".notdef", 0}, {"nosuchname", 0}, {"zzzz", 0}, {"a100", 0}, {"Acutesmall", 0},
    };
    for (const auto& [name, character] : cases)
        EXPECT_EQ(characterOfGlyph(name), character) << name;
    EXPECT_EQ(characterOfDingbat("a100"), char32_t(0x275E));
    EXPECT_EQ(characterOfDingbat("space"), char32_t(' '));
}
