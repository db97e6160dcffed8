#include <text/Directions.h>
#include <text/Engine.h>

#include <host/fonts/TrueTypeProgram.h>
#include <tests/support/TestFolder.h>

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using Host::TextEngine;

namespace {

// The file of a family; empty where it isn't installed.
std::string fileOf(const char* family)
{
    FcPattern* const pattern = FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, family, FC_STYLE, FcTypeString,
        family == std::string("DejaVu Sans") ? "Book" : "Regular", nullptr);
    FcObjectSet* const wanted = FcObjectSetBuild(FC_FILE, nullptr);
    FcFontSet* const fonts = FcFontList(nullptr, pattern, wanted);
    FcChar8* path = nullptr;
    std::string found;
    if (fonts && fonts->nfont > 0 && FcPatternGetString(fonts->fonts[0], FC_FILE, 0, &path) == FcResultMatch)
        found = reinterpret_cast<const char*>(path);
    if (fonts)
        FcFontSetDestroy(fonts);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(pattern);
    return found;
}

std::shared_ptr<TextEngine> engineOf(const std::string& file)
{
    auto engine = Text::createEngine({{file}, false});
    return engine ? *engine : nullptr;
}

// Where the characters are that the glyphs draw, from left to right: "2+1 0+2".
std::string places(const std::vector<TextEngine::Glyph>& glyphs)
{
    std::string text;
    for (const TextEngine::Glyph& glyph : glyphs)
        text += (text.empty() ? "" : " ") + std::to_string(glyph.first) + "+" + std::to_string(glyph.count);
    return text;
}

} // namespace

TEST(Directions, partsComeFromLeftToRight)
{
    const std::tuple<std::u32string, bool, std::string> cases[] = {
        // text, the paragraph's direction, parts
        {U"abc", false, "0+3"},
        {U"\u05D0\u05D1 12", true, "3+2 0+3r"},
        {U"a \u05D0 12 b", false, "0+2 4+2 2+2r 6+2"},
    };
    for (const auto& [text, isRightToLeft, parts] : cases) {
        std::string found;
        for (const Text::DirectedPart& part : Text::partsOf(text, isRightToLeft))
            found += (found.empty() ? "" : " ") + std::to_string(part.first) + "+" + std::to_string(part.count)
                + (part.isRightToLeft ? "r" : "");
        EXPECT_EQ(found, parts);
    }
    EXPECT_TRUE(Text::isRightToLeft(U"1 \u0645 a"));
    EXPECT_FALSE(Text::isRightToLeft(U"1 a \u0645"));
    EXPECT_FALSE(Text::isRightToLeft(U""));
}

TEST(ShapingEngine, lettersAreJoinedAndInOrder)
{
    const auto engine = engineOf(fileOf("DejaVu Sans"));
    if (!engine)
        GTEST_SKIP() << "DejaVu Sans isn't installed";
    const std::u32string arabic = U"\u0628\u0628\u0628";
    const auto joined = engine->shape(arabic, true);
    EXPECT_EQ(places(joined), "2+1 1+1 0+1");
    EXPECT_NE(joined[0].id, joined[1].id);
    EXPECT_NE(joined[1].id, joined[2].id);
    EXPECT_NE(joined[2].id, engine->shape(U"\u0628", true)[0].id);
    EXPECT_EQ(places(engine->shape(U"a\u0301b", false)).substr(0, 3), "0+2") << "one glyph for both";
    EXPECT_EQ(places(engine->shape(U"q\u0301b", false)), "0+1 1+1 2+1") << "a letter and its mark";
    EXPECT_EQ(places(engine->shape(U"a\u200Db", false)), "0+2 2+1") << "what isn't seen has no glyph";
    EXPECT_EQ(engine->missing(U"a\u6771\u6771b"), U"\u6771");
    EXPECT_TRUE(engine->shape(U"", false).empty());
}

TEST(ShapingEngine, subsetsHaveTheGlyphsUnderTheirIds)
{
    const auto engine = engineOf(fileOf("DejaVu Sans"));
    if (!engine)
        GTEST_SKIP() << "DejaVu Sans isn't installed";
    const auto glyphs = engine->shape(U"A\u0141", false); // the second one consists of others
    const auto subset = engine->subset(0, {glyphs[1].id});
    ASSERT_TRUE(subset);
    EXPECT_LT(subset->size(), 100000u);
    const auto program = Host::TrueTypeProgram::read(*subset);
    ASSERT_TRUE(program);
    EXPECT_EQ(program->state(glyphs[1].id), Host::GlyphState::Drawn);
    EXPECT_NE(program->state(glyphs[0].id), Host::GlyphState::Drawn);
    EXPECT_FALSE(engine->font(0).isCompact);
    EXPECT_EQ(engine->font(0).name, "DejaVuSans");
    EXPECT_FALSE(engine->subset(1, {}));
}

TEST(ShapingEngine, subsetsOfCffAreThatAlone)
{
    const auto engine = engineOf(fileOf("Noto Sans CJK JP"));
    if (!engine)
        GTEST_SKIP() << "Noto Sans CJK isn't installed";
    const auto glyphs = engine->shape(U"\u6771\u4EAC", false);
    const auto subset = engine->subset(0, {glyphs[0].id, glyphs[1].id});
    ASSERT_TRUE(subset);
    EXPECT_TRUE(engine->font(0).isCompact);
    EXPECT_EQ(subset->substr(0, 2), std::string("\1\0", 2)) << "a CFF program begins so";
    EXPECT_LT(subset->size(), 10000u);
    EXPECT_EQ(glyphs[0].width, 1000);
}

TEST(ShapingEngine, aTextHasTheSameFontWhateverCameBefore)
{
    const auto fresh = *Text::createEngine({}), used = *Text::createEngine({}), other = *Text::createEngine({});
    if (!other->missing(U"\u6771A").empty())
        GTEST_SKIP() << "no fonts are installed for these";
    used->shape(U"\u6771", false);
    EXPECT_EQ(used->font(used->shape(U"A", false)[0].font).name,
        fresh->font(fresh->shape(U"A", false)[0].font).name);
}

TEST(ShapingEngine, aFileThatIsNoFontIsRefused)
{
    const Tests::TestFolder folder;
    std::ofstream(folder.path("font.ttf")) << std::string(5000, 'x');
    for (const char* name : {"font.ttf", "missing.ttf"}) {
        const auto refused = Text::createEngine({{folder.path(name)}, false});
        ASSERT_FALSE(refused) << name;
        EXPECT_EQ(refused.refusal().message.find("the font file "), 0u);
    }
    const auto none = Text::createEngine({{}, false});
    EXPECT_EQ((*none)->missing(U"ab"), U"ab");
    EXPECT_TRUE((*none)->shape(U"ab", false).empty());
}
