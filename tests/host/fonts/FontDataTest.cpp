#include <host/fonts/BaseEncodings.h>
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

TEST(FontData, encodingsHaveTheirNamesAtTheirCodes)
{
    const std::tuple<BaseEncoding, int, const char*> cases[] = {
        {BaseEncoding::Standard, 39, "quoteright"}, {BaseEncoding::Standard, 251, "germandbls"},
        {BaseEncoding::WinAnsi, 39, "quotesingle"}, {BaseEncoding::WinAnsi, 128, "Euro"},
        {BaseEncoding::WinAnsi, 129, ""}, {BaseEncoding::WinAnsi, 160, "space"},
        {BaseEncoding::WinAnsi, 178, "twosuperior"}, {BaseEncoding::WinAnsi, 255, "ydieresis"},
        {BaseEncoding::MacRoman, 0xCA, "space"}, {BaseEncoding::MacRoman, 0xDB, "currency"},
        {BaseEncoding::MacRoman, 0xDE, "fi"}, {BaseEncoding::MacRoman, 0xAD, ""}, {BaseEncoding::PdfDoc, 0x18, "breve"},
        {BaseEncoding::PdfDoc, 0x9E, "zcaron"}, {BaseEncoding::PdfDoc, 0xA0, "Euro"}, {BaseEncoding::PdfDoc, 0xAD, ""},
        {BaseEncoding::Symbol, 97, "alpha"}, {BaseEncoding::ZapfDingbats, 52, "a20"},
    };
    for (const auto& [encoding, code, name] : cases)
        EXPECT_EQ(namesOf(encoding)[std::size_t(code)], name) << code;
    EXPECT_EQ(macOsCode("Omega"), 0xBD) << "which the encoding of PDF leaves out";
    EXPECT_EQ(macOsCode("A"), 'A');
    EXPECT_FALSE(macOsCode("Lslash"));
    EXPECT_FALSE(findEncoding("")) << "as the built-in encodings are called";
}
