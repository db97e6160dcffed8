#include <tests/support/FormText.h>
#include <tests/support/Pages.h>

#include <document/Resolve.h>
#include <host/base/ErrorWords.h>
#include <host/fields/DefaultAppearance.h>
#include <host/fields/Fill.h>
#include <host/streams/StreamBytes.h>

#include <gtest/gtest.h>

#include <set>

using namespace Tests;
using namespace Host;

namespace {

const std::string resources = "/DA (/Helv 10 Tf 0 g) /DR << /Font << /Helv << /Type /Font /Subtype /Type1 "
                              "/BaseFont /Helvetica /Encoding /WinAnsiEncoding >> >> >> /Fields [ 3 0 R ]";

Ref<PDF::Document> formWith(const std::string& widget)
{
    return Tests::open(formFile(resources, {"<< /T (a) /Rect [ 0 0 100 20 ] " + widget + " >>"}));
}

Ref<PDF::Dictionary> entriesOf(const Ref<PDF::Document>& document)
{
    return document->object(make<PDF::ObjectRefObj>(3, 0))->valueAsDictionary();
}

Ref<PDF::Stream> lookOf(const Ref<PDF::Document>& document, const char* state = nullptr)
{
    const auto looks = entriesOf(document)->findAsDictionary(Tests::text("AP"), true);
    Ref<PDF::Value> look = looks ? looks->find(Tests::text("N")) : nullptr;
    if (look && state)
        look = PDF::valueAs<PDF::Dictionary>(look)->find(Tests::text(state));
    return look ? PDF::resolveAs<PDF::Stream>(*document, look) : nullptr;
}

// The content after the clipping, its lines joined by blanks.
std::string drawn(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& look)
{
    const auto data = look ? decoded(document, look) : Result<std::vector<std::uint8_t>>(codeRefusal(ErrNotFound));
    if (!data)
        return "nothing";
    std::string text(data->begin(), data->end());
    std::replace(text.begin(), text.end(), '\n', ' ');
    const std::size_t clipped = text.find(" n ");
    return clipped == text.npos ? text : text.substr(clipped + 3, text.rfind("Q EMC") - clipped - 3);
}

// Draws lowercase letters as themselves, "fi" as one glyph, and capital letters by two.
class LetterEngine : public TextEngine {
public:
    std::u32string missing(std::u32string_view text) noexcept override
    {
        return text.find(U'!') != text.npos ? U"!" : U"";
    }
    bool isRightToLeft(std::u32string_view) noexcept override { return false; }
    std::vector<Glyph> shape(std::u32string_view line, bool) noexcept override
    {
        std::vector<Glyph> glyphs;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const bool isCapital = line[i] >= 'A' && line[i] <= 'Z';
            const std::size_t count = line.substr(i, 2) == U"fi" ? 2 : 1;
            glyphs.push_back({0, line[i] & 0xFF, i, count, 500, 500, 0, 0});
            if (isCapital)
                glyphs.push_back({0, 7, i, 0, 0, 100, -200, 50});
            i += count - 1;
        }
        return glyphs;
    }
    Font font(std::uint32_t) noexcept override
    {
        return {.name = "Letters", .isCompact = true, .ascent = 800, .descent = -200};
    }
    Result<std::string> subset(std::uint32_t, const std::vector<std::uint32_t>& ids) noexcept override
    {
        ++subsets;
        return "program of " + std::to_string(ids.size());
    }
    int subsets = 0;
};

} // namespace

TEST(Drawing, aTextIsWhereItsFieldWantsIt)
{
    const std::string multiline = "/FT /Tx /Ff 4096 /Rect [ 0 0 60 40 ]", comb = "/FT /Tx /Ff 16777216 /MaxLen 5";
    const std::string helv = "BT 0 g ";
    const std::tuple<std::string, FieldValue, std::string> cases[] = {
        {"/FT /Tx", "a(b", helv + "2 6.29 Td /Helv 10 Tf (a\\(b) Tj ET "},
        {"/FT /Tx", "", ""},
        {"/FT /Tx", "a\r\nb", helv + "2 6.29 Td /Helv 10 Tf (a b) Tj ET "},
        {"/FT /Tx /Q 1", "ab", helv + "44.44 6.29 Td /Helv 10 Tf (ab) Tj ET "},
        {"/FT /Tx /Q 2 /BS << /W 3 >>", "ab", helv + "82.88 6.29 Td /Helv 10 Tf (ab) Tj ET "},
        {"/FT /Tx /Ff 8192", "ab", helv + "2 6.29 Td /Helv 10 Tf (**) Tj ET "},
        {"/FT /Tx /DA (1 0 0 rg /Helv 0 Tf)", "ab", "BT 1 0 0 rg 2 5.0516 Td /Helv 13.338 Tf (ab) Tj ET "},
        {"/FT /Tx /DA (/Own 10 Tf) /DR << /Font << /Own << /Type /Font /Subtype /Type1 /BaseFont /Courier /Encoding "
         "/WinAnsiEncoding >> >> >>",
            "ab", helv + "2 6.295 Td /Own 10 Tf (ab) Tj ET "},
        {"/FT /Tx /DA /Helv#2012#20Tf", "ab", helv + "2 5.548 Td /Helv 12 Tf (ab) Tj ET "},
        {"/FT /Tx /DA (/None -1 Tf) /MK << /R 90 >>", "ab", helv + "2 44.6619 Td /Text0 14.3885 Tf (ab) Tj ET "},
        {multiline, "one two three\nf",
            helv
                + "2 26.44 Td /Helv 10 Tf (one two ) Tj 0 -11.56 Td /Helv 10 Tf (three) Tj "
                  "0 -11.56 Td /Helv 10 Tf (f) Tj ET "},
        {multiline, "unbreakables",
            helv + "2 26.44 Td /Helv 10 Tf (unbreakable) Tj 0 -11.56 Td /Helv 10 Tf (s) Tj ET "},
        {comb, "ab", helv + "7.22 6.29 Td /Helv 10 Tf (a) Tj 20 0 Td /Helv 10 Tf (b) Tj ET "},
        {comb + " /Q 2", "ab", helv + "67.22 6.29 Td /Helv 10 Tf (a) Tj 20 0 Td /Helv 10 Tf (b) Tj ET "},
        {"/FT /Ch /Ff 131072 /Opt [ [ (e) (shown) ] ]", "e", helv + "2 6.29 Td /Helv 10 Tf (shown) Tj ET "},
        {"/FT /Ch /Opt [ (a) (b) (c) ]", "c",
            "0.6 0.75686 0.8549 rg 1 7.44 98 11.56 re f BT 0 g 2 9.51 Td /Helv 10 Tf (c) Tj ET "},
        {"/FT /Tx /Rect [ 0 0 0 20 ]", "ab", "nothing"},
        {"/FT /Tx /Rect [ 0 0 1000000000 20 ]", "ab", "nothing"},
    };
    for (const auto& [widget, value, content] : cases) {
        const auto document = formWith(widget);
        const auto done = fill(document, "a", value);
        ASSERT_TRUE(done) << widget << ": " << done.refusal().message;
        EXPECT_EQ(drawn(document, lookOf(document)), content) << widget;
    }
}

TEST(Drawing, aLookHasTheFormOfItsWidget)
{
    const std::tuple<std::string, std::string> cases[] = {
        // what is before the text, and the dictionary's beginning
        {"/Rect [ 10.5 0 12.25 10 ] /MK << /R 90 >>", "/BBox [ 0 0 10 1.75 ] /Length ? /Matrix [ 0 1 -1 0 1.75 0 ]"},
        {"/Rect [ 30 20 0 0 ] /MK << /R 45 >>", "/BBox [ 0 0 30 20 ] /Length ? /Resources"},
    };
    for (const auto& [widget, beginning] : cases) {
        const auto document = Tests::open(formFile(resources, {"<< /T (a) /FT /Tx " + widget + " >>"}));
        ASSERT_TRUE(fill(document, "a", "x"));
        std::string entries = valueText(document, lookOf(document)->dict());
        const std::size_t length = entries.find("/Length ") + 8;
        entries.replace(length, entries.find(' ', length) - length, "?");
        EXPECT_EQ(entries.substr(3, beginning.size()), beginning);
    }
    const auto document = formWith("/FT /Tx /MK << /BC [ 1 0 0 ] /BG [ 2 ] >> /BS << /W 2 /S /D /D [ 4 ] >>");
    ASSERT_TRUE(fill(document, "a", ""));
    EXPECT_EQ(drawn(document, lookOf(document)), "");
    const auto data = *decoded(document, lookOf(document));
    EXPECT_EQ(
        std::string(data.begin(), data.end()).find("1 g\n0 0 100 20 re\nf\n1 0 0 RG\n2 w\n[4 ] 0 d\n1 1 98 18 re\ns\n"),
        0u);
}

TEST(Drawing, whatCanNotBeUsedIsReplacedWithAWarning)
{
    const std::string standard = ": its font (DA) can't be used, and a standard one is";
    const std::string size = ": its text size (DA) can't be used, and the one that fits is";
    const std::tuple<std::string, std::vector<std::string>> cases[] = {
        {"", {}},
        {"/DA (/HeBo 0 Tf) /MK << /R -90 >>", {}},
        {"/DA (0 g)", {"a" + standard}},
        {"/DA (/None 10 Tf)", {"a" + standard}},
        {"/DA (/Helv 10 Tf) /DR << /Font << /Helv << /Subtype /Type3 >> >> >>", {"a" + standard}},
        {"/DA (/Helv -1 Tf)", {"a" + size}},
        {"/DA (/Helv Tf) /MK << /R 45 >>",
            {"a" + size, "a: its rotation (MK) is no multiple of 90 degrees, and is left out"}},
    };
    for (const auto& [widget, warnings] : cases) {
        const auto document = formWith("/FT /Tx " + widget);
        EXPECT_EQ(*fill(document, "a", "x"), warnings) << widget;
        EXPECT_NE(drawn(document, lookOf(document)).find("(x) Tj"), std::string::npos) << widget;
    }
}

TEST(Drawing, buttonsWithoutLooksGetSome)
{
    const auto document = formWith("/FT /Btn /MK << /CA (8) /BG [ 1 ] >>");
    ASSERT_TRUE(fill(document, "a", true));
    EXPECT_NE(drawn(document, lookOf(document, "Yes")).find("(8) Tj"), std::string::npos);
    EXPECT_EQ(drawn(document, lookOf(document, "Off")).find("Tj"), std::string::npos);
    EXPECT_EQ(plain(entriesOf(document)->find(Tests::text("AS"))->asText()), "Yes");
}

TEST(Drawing, whatNoFontHasIsRefusedOrLeftOutWithAWarning)
{
    const auto document = formWith("/FT /Tx");
    const auto refused = fill(document, "a", "a\xC5\x81\xE6\x97\xA5");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.refusal().message, "no font has the characters \"\xC5\x81\" (U+0141), \"\xE6\x97\xA5\" (U+65E5)");
    EXPECT_FALSE(document->changed());
    const auto done = fill(document, "a", "a\xC5\x81", {Appearances::Drawn, {}, true, false});
    ASSERT_TRUE(done && done->size() == 1);
    EXPECT_EQ(drawn(document, lookOf(document)), "BT 0 g 2 6.29 Td /Helv 10 Tf (a) Tj ET ");
}

TEST(Drawing, anEngineDrawsTheRestAndItsFontGrows)
{
    const auto engine = std::make_shared<LetterEngine>();
    const auto document = formWith("/FT /Tx");
    auto filler = FormFiller::create(document);
    const FillOptions options{
        Appearances::Drawn, [&] { return Result<std::shared_ptr<TextEngine>>(engine); }, false, false};
    ASSERT_FALSE(filler->fill("a",
        "\xC5\x81"
        "fi",
        options)); // U+0141, as glyph 0x41
    const std::string both = drawn(document, lookOf(document));
    EXPECT_NE(both.find("[<00410066>] TJ"), std::string::npos) << both;
    ASSERT_FALSE(filler->fill("a",
        "\xC5\x81"
        "f",
        options)); // a glyph that was "fi" before
    EXPECT_EQ(engine->subsets, 1);
    EXPECT_NE(drawn(document, lookOf(document)).find("/Span <</ActualText <FEFF0066>>> BDC [<0066>] TJ EMC"),
        std::string::npos);
    ASSERT_FALSE(filler->fill("a",
        "\xC5\x81"
        "Q",
        options));
    EXPECT_EQ(engine->subsets, 2);
    FillOptions later = options;
    later.areFontsLater = true;
    for (const char* text : {"\xC5\x81 x", "\xC5\x81 y"})
        ASSERT_FALSE(filler->fill("a", text, later));
    EXPECT_EQ(engine->subsets, 2);
    ASSERT_FALSE(filler->finish() || filler->finish());
    EXPECT_EQ(engine->subsets, 3);
    ASSERT_FALSE(filler->fill("a",
        "\xC5\x81"
        "Q",
        options));
    EXPECT_NE(drawn(document, lookOf(document)).find("<FEFF0051>>> BDC [<0051>] TJ 0.5 Ts"), std::string::npos)
        << drawn(document, lookOf(document));
    EXPECT_TRUE(filler->fill("a", "\xC5\x81!", options));
    const auto fonts
        = PDF::resolveEntryAs<PDF::Dictionary>(*document, *lookOf(document)->dict(), Tests::text("Resources"))
              ->findAsDictionary(Tests::text("Font"), true);
    const auto font = PDF::resolveAs<PDF::Dictionary>(*document, fonts->find(fonts->keys()->get(0)));
    const auto map = *decoded(document, PDF::resolveAs<PDF::Stream>(*document, font->find(Tests::text("ToUnicode"))));
    EXPECT_NE(std::string(map.begin(), map.end()).find("<0041> <0141>\n<0066> <00660069>\n"), std::string::npos);
}

TEST(Drawing, viewersAreAskedNoMoreToDrawWhatAnEngineDrew)
{
    const std::string asks = "/NeedAppearances true ", stopped = "/NeedAppearances false ";
    const std::string lookless = "/V (seen)", empty = "/V (seen) /AP << /N 5 0 R >>";
    const std::string drawn = "/V (seen) /AP << /N 6 0 R >>";
    // Of the form, the other field, the value, and of the form then.
    const std::tuple<std::string, std::string, const char*, std::string> cases[] = {
        {"", drawn, "\xC5\x81", ""},
        {asks, drawn, "plain", asks},
        {asks, drawn, "\xC5\x81", stopped},
        {asks, "", "\xC5\x81", stopped},
        {asks, "/Rect [ 0 0 0 0 ] " + lookless, "\xC5\x81", stopped},
        {asks, lookless, "\xC5\x81", stopped},
        {asks, empty, "\xC5\x81", stopped},
    };
    for (const auto& [before, other, value, after] : cases) {
        SCOPED_TRACE(before + other + value);
        const std::string place = "/Rect [ 0 0 100 20 ] ";
        const auto form = [](const std::string& entry) { return "/DA (/Helv 10 Tf) /Fields [ 3 0 R 4 0 R ] " + entry; };
        const auto document = Tests::open(formFile(form(before),
            {"<< /FT /Tx /T (a) " + (other.starts_with("/Rect") ? other : place + other) + " >>",
                "<< /FT /Tx /T (b) " + place + ">>", "<< /Length 0 >>\nstream\n\nendstream",
                "<< /Length 6 >>\nstream\n(x) Tj\nendstream"}));
        auto filler = FormFiller::create(document);
        FillOptions options;
        options.engine = [] { return Result<std::shared_ptr<TextEngine>>(std::make_shared<LetterEngine>()); };
        const Ref<PDF::Stream> look = lookOf(document);
        ASSERT_FALSE(filler->fill("b", value, options));
        const auto now = [&] {
            return valueText(document, document->getCatalog()->valueAsDictionary()->find(Tests::text("AcroForm")));
        };
        EXPECT_EQ(now(), "<< " + form(after) + ">>");
        ASSERT_EQ(filler->warnings().size(), std::size_t(after == stopped));
        const bool isUnseen = other == lookless || other == empty;
        EXPECT_TRUE(after != stopped || filler->warnings()[0].ends_with("not show the values of a") == isUnseen);
        EXPECT_EQ(lookOf(document), look) << "the other field stays";
        ASSERT_FALSE(filler->fill("a", "seen", options));
        EXPECT_TRUE(after != stopped || filler->warnings()[0].ends_with("may lose characters"));
    }
}

TEST(Drawing, textOfAnyLengthTakesTimeInItsLength)
{
    for (const char* widget :
        {"/FT /Tx /Ff 4096 /DA (/Helv 0 Tf)", "/FT /Tx /Ff 4096 /Rect [ 0 0 0.001 0.001 ]", "/FT /Tx"}) {
        const auto document = formWith(widget);
        EXPECT_TRUE(fill(document, "a", std::string(1 << 17, 'x'))) << widget;
    }
}

TEST(DefaultAppearance, readsWhatItKnowsAndNothingElse)
{
    const std::tuple<std::string, std::string, double, std::string> cases[] = {
        {"/Helv 12 Tf 0 g", "Helv", 12, "0 g"},
        {"0.5 0 .25 rg /A#20B -3 Tf", "A B", 0, "0.5 0 0.25 rg"},
        {"/F1 12 Tf 1 0 0 1 0 0 Tm 0 g", "F1", 12, "0 g"},
        {"/F 1000000000 Tf", "F", 0, "0 g"},
        {"/F nan Tf 1 rg (x) Tj q", "F", 0, "0 g"},
        {"/F .00001 Tf", "F", 0, "0 g"},
        {"/F 1e3 Tf", "F", 0, "0 g"},
        {"1 0 0 0 k Tf", "", 0, "1 0 0 0 k"},
        {"", "", 0, "0 g"},
    };
    for (const auto& [text, font, size, color] : cases) {
        const DefaultAppearance read = DefaultAppearance::read(text);
        EXPECT_EQ(std::tuple(read.font, read.size, read.color), std::tuple(font, size, color)) << text;
    }
}
