#include <host/fonts/BaseEncodings.h>
#include <host/fonts/GlyphNames.h>
#include <host/fonts/StandardFonts.h>

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

TEST(FontData, everyNameInAnEncodingOfLettersHasAWidthInTheStandardFonts)
{
    using enum BaseEncoding;
    for (const BaseEncoding encoding : {Standard, WinAnsi, MacRoman, PdfDoc})
        for (const std::string& name : namesOf(encoding))
            EXPECT_TRUE(name.empty() || StandardFont::find("Times-Bold")->width(name)) << name;
    for (const char* symbols : {"Symbol", "ZapfDingbats"})
        for (const std::string& name : namesOf(StandardFont::find(symbols)->encoding()))
            EXPECT_TRUE(name.empty() || StandardFont::find(symbols)->width(name)) << name;
}

TEST(FontData, standardFontsAreFoundByTheNamesThatFilesHaveForThem)
{
    // Names, the font, and the widths of A, i and the dagger in it.
    const std::tuple<std::vector<const char*>, const char*, std::vector<double>> cases[] = {
        {{"Helvetica", "Helv", "Arial", "ArialMT", "ABCDEF+Arial", "Helvetica-Regular"}, "Helvetica", {667, 222, 556}},
        {{"Helvetica-Bold", "HeBo", "Arial,Bold", "Arial-BoldMT", "Arial-Bold"}, "Helvetica-Bold", {722, 278, 556}},
        {{"Helvetica-BoldOblique", "HeBO", "Arial-BoldItalicMT", "Arial,BoldItalic"}, "Helvetica-BoldOblique",
            {722, 278, 556}},
        {{"Times-Roman", "TiRo", "TimesNewRoman", "TimesNewRomanPSMT", "Times New Roman", "Times"}, "Times-Roman",
            {722, 278, 500}},
        {{"Times-BoldItalic", "TiBI", "TimesNewRomanPS-BoldItalicMT", "TimesNewRoman,BoldItalic"}, "Times-BoldItalic",
            {667, 278, 500}},
        {{"Times-Italic", "TiIt", "TimesNewRoman,Italic"}, "Times-Italic", {611, 278, 500}},
        {{"Courier-Oblique", "CoOb", "CourierNew,Italic", "CourierNewPS-ItalicMT"}, "Courier-Oblique",
            {600, 600, 600}},
        {{"Symbol", "Symb", "SymbolMT", "Symbol,Bold"}, "Symbol", {0, 0, 0}},
        {{"ZapfDingbats", "ZaDb"}, "ZapfDingbats", {0, 0, 0}},
        {{"ArialNarrow", "Arial-Black", "Helvetica-Light", "Verdana", "", "arial", "ABCDEF+", "Boldly"}, nullptr, {}},
    };
    for (const auto& [names, font, widths] : cases)
        for (const char* name : names) {
            const StandardFont* found = StandardFont::find(name);
            ASSERT_EQ(found != nullptr, font != nullptr) << name;
            if (!found)
                continue;
            EXPECT_EQ(found->name(), font) << name;
            const std::vector<double> got = {found->width("A").value_or(0), found->width("i").value_or(0),
                found->width("dagger").value_or(0)};
            EXPECT_EQ(got, widths) << name;
        }
}

TEST(FontData, aMarkIsCentredByItsBox)
{
    const StandardFont& dingbats = *StandardFont::find("ZaDb");
    EXPECT_EQ(dingbats.width("a20"), 846);
    EXPECT_EQ(dingbats.box("a20")->right, 811);
    EXPECT_EQ(dingbats.heights().ascent, 820) << "from the box: there is no other";
    EXPECT_FALSE(StandardFont::find("Helv")->box("A"));
    EXPECT_EQ(StandardFont::find("TiRo")->heights().descent, -217);
}
