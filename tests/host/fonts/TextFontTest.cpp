#include <tests/support/FontPrograms.h>
#include <tests/support/FormText.h>

#include <host/fonts/TextFont.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

std::string streamText(const std::string& entries, const std::string& data)
{
    return "<< " + entries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
}

// The font of object 3; the others follow it.
Result<TextFont> fontOf(const std::string& dictionary, std::vector<std::string> others = {})
{
    others.insert(others.begin(), "<< /Type /Font " + dictionary + " >>");
    const auto document = Tests::open(formFile("", others));
    if (!document) {
        ADD_FAILURE() << "not a file: " << dictionary;
        return Refusal{};
    }
    Budget budget(document);
    return TextFont::read(document, *document->object(make<PDF::ObjectRefObj>(3, 0))->valueAsDictionary(), budget);
}

// "41:600 -" for a code of 0x41 that is 600 wide, and none.
std::string codesFor(const TextFont& font, const std::u32string& characters)
{
    std::ostringstream codes;
    for (const char32_t c : characters) {
        const auto code = font.find(c);
        codes << (codes.tellp() > 0 ? " " : "");
        code ? codes << std::hex << code->code << ":" << std::dec << code->width : codes << "-";
    }
    return codes.str();
}

} // namespace

TEST(TextFont, hasTheCharactersThatReadersShow)
{
    const std::string letters = "/FirstChar 65 /Widths [ 500 0 700.5 ] ";
    const std::string map = streamText("", "2 beginbfchar <41> <0416> <0042> <00E9> endbfchar");
    const std::string wide = streamText("", "1 beginbfrange <0041> <0043> <0041> endbfrange");
    const std::string composite = "/Subtype /Type0 /BaseFont /A /Encoding /Identity-H /ToUnicode 4 0 R "
                                  "/DescendantFonts [ << /DW 900 /W [ 65 [ 100 ] 66 66 200 ] >> ]";
    const std::tuple<const char*, std::string, std::vector<std::string>, std::u32string, std::string> cases[] = {
        {"one of the standard ones", "/Subtype /Type1 /BaseFont /Helvetica", {}, U"A\u00E9", "41:667 -"},
        {"in its encoding", "/Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding", {},
            U"A\u00E9\u00A0\u0141", "41:667 e9:556 20:278 -"},
        {"differences",
            "/Subtype /Type1 /BaseFont /Helvetica /Encoding << /Differences [ 65 /Lslash /zacute 999 /A ] >>", {},
            U"\u0141\u017A"
            "AC",
            "41:556 42:500 - 43:722"},
        {"widths", "/Subtype /TrueType /BaseFont /Own /Encoding /WinAnsiEncoding " + letters, {}, U"ABCD",
            "41:500 - 43:700.5 -"},
        {"wrong widths",
            "/Subtype /Type1 /BaseFont /Own /Encoding /WinAnsiEncoding /FirstChar -300000000 /Widths [ -5 /x ]", {},
            U"A", "refused"},
        {"no widths", "/Subtype /Type1 /BaseFont /Own /Encoding /WinAnsiEncoding", {}, U"A", "refused"},
        {"what readers give back", "/Subtype /Type1 /BaseFont /Own /ToUnicode 4 0 R " + letters, {map},
            U"\u0416A\u00E9", "41:500 - -"},
        {"signs", "/Subtype /Type1 /BaseFont /ZapfDingbats", {},
            U"\u2714"
            "A",
            "34:846 -"},
        {"composite", composite, {wide}, U"ABCD", "41:100 42:200 43:900 -"},
        {"no characters known", composite, {"<< >>"}, U"A", "refused"},
        {"another map", "/Subtype /Type0 /BaseFont /A /Encoding /UniJIS-UTF16-H /ToUnicode 4 0 R", {wide}, U"A",
            "refused"},
        {"drawings", "/Subtype /Type3 /FirstChar 65 /Widths [ 1 ] /Encoding << /Differences [ 65 /A ] >>", {}, U"A",
            "refused"},
    };
    for (const auto& [rule, dictionary, others, characters, codes] : cases) {
        const auto font = fontOf(dictionary, others);
        EXPECT_EQ(font ? codesFor(*font, characters) : "refused", codes)
            << rule << (font ? "" : font.refusal().message);
    }
}

// Ranges that overlap, and a list that is shared, must not be walked through each time.
TEST(TextFont, readsWidthsInLinearTime)
{
    const std::string map = streamText("", "1 beginbfrange <0041> <0043> <0041> endbfrange");
    std::string ranges, lists, list;
    for (int i = 0; i < 30000; ++i) {
        ranges += "0 65534 300 ";
        lists += "0 5 0 R ";
        list += "400 ";
    }
    for (const auto& [widths, codes] : {std::pair(ranges, "42:300"), std::pair(lists, "42:400")}) {
        const auto font = fontOf("/Subtype /Type0 /BaseFont /A /Encoding /Identity-H /ToUnicode 4 0 R "
                                 "/DescendantFonts [ << /W [ " + widths + "] >> ]",
            {map, "[ " + list + "]"});
        ASSERT_TRUE(font);
        EXPECT_EQ(codesFor(*font, U"B"), codes);
    }
}

TEST(TextFont, ofASubsetOnlyWhatIsInItCounts)
{
    const std::string program = trueType("xx-", {{3, 1, segments({{'A', 1}, {'B', 3}})}});
    const std::string font =
        "/FirstChar 65 /Widths [ 500 500 500 ] /Encoding /WinAnsiEncoding /FontDescriptor << /Flags 32 ";
    const auto trueTypeFont = fontOf(
        "/Subtype /TrueType /BaseFont /ABCDEF+Own " + font + "/FontFile2 4 0 R >>", {streamText("", program)});
    ASSERT_TRUE(trueTypeFont) << trueTypeFont.refusal().message;
    EXPECT_EQ(codesFor(*trueTypeFont, U"ABC"), "41:500 - -");
    const auto named = fontOf(
        "/Subtype /Type1 /BaseFont /ABCDEF+Own " + font + "/FontFile3 4 0 R /CharSet (/A/Ccedilla) >>",
        {streamText("", "x")});
    EXPECT_EQ(codesFor(*named, U"ABC"), "41:500 - -");
}

TEST(TextFont, linesAreAsHighAsTheFontSays)
{
    const std::tuple<std::string, double, double> cases[] = {
        // of the descriptor; above and below the baseline
        {"/FontBBox [ -665 -325 2000 1006 ] /Ascent 905 /Descent -212", 1119, -212},
        {"/FontBBox [ -665 -325 2000 1006 ] /Descent 325", 1006, -325},
        {"/FontBBox [ 0 0 0 0 ] /Ascent 905 /Descent -212", 905, -212},
        {"/FontBBox [ 0 -1000000000 0 99999 ] /Ascent 99999999999 /Descent -1", 949, -207},
    };
    for (const auto& [entries, ascent, descent] : cases) {
        const auto font = fontOf(
            "/Subtype /Type1 /BaseFont /Own /FirstChar 65 /Widths [ 1 ] /FontDescriptor << " + entries + " >>");
        ASSERT_TRUE(font) << entries;
        EXPECT_EQ(font->heights().ascent, ascent) << entries;
        EXPECT_EQ(font->heights().descent, descent) << entries;
    }
    const std::pair<const char*, const char*> looks[] = {{"ABCDEF+TimesNewRomanPS-BoldMT", "Times-Bold"},
        {"Courier-Whatever", "Courier"}, {"Garamond-Italic", "Helvetica-Oblique"}, {"Times", "Times-Roman"}};
    for (const auto& [name, standard] : looks)
        EXPECT_EQ(
            fontOf("/Subtype /Type1 /FirstChar 65 /Widths [ 1 ] /BaseFont /" + std::string(name))->substitute().name(),
            standard);
}
