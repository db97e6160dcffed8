#include <host/fonts/CodeMap.h>
#include <host/fonts/PostScriptReader.h>

#include <gtest/gtest.h>

using namespace Host;

namespace {

std::string shown(const CodeRanges& codes)
{
    std::string text;
    for (const CodeRanges::Range& range : codes.ranges()) {
        char row[64];
        const char* form = range.isText ? "%X-%X>text " : "%X-%X>%X/%d ";
        std::snprintf(row, sizeof(row), form, range.first, range.last, range.target, range.codeLength);
        text += row;
    }
    return text;
}

} // namespace

TEST(CodeMap, readsWhatCodesLeadTo)
{
    // The text, the characters and the glyphs.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"1 beginbfchar <41> <0042> <0043> <D83DDE00> endbfchar", "41-41>42/1 43-43>1F600/2 ", ""},
        {"2 beginbfrange\n<0000> <FFFF> <0000>\nendbfrange", "0-FFFF>0/2 ", ""},
        {"beginbfrange <05> <07> [ <0041> /B <00430044> ] <08><0A>[<0061>] endbfrange",
            "5-5>41/1 6-6>42/1 7-7>text 8-8>61/1 ", ""},
        {"beginbfrange <05> <06> [ <0041> <0042> <0043> ] endbfrange", "5-5>41/1 6-6>42/1 ", ""},
        {"beginbfchar <01> <00660069> <02> <> <03> <D83D> endbfchar", "1-1>text 2-2>text 3-3>D83D/1 ", ""},
        {"beginbfrange <01> <03> <00660069> <03> <01> <0041> endbfrange", "1-3>text ", ""},
        {"beginbfrange <10> <20> <0041> <18> <28> <0061> <1A> <1B> <0030> endbfrange", "10-20>41/1 21-28>6A/1 ", ""},
        {"begincidchar <0041> 7 <42> 70000 endcidchar begincidrange <00> <7F> 1 endcidrange", "", "0-7F>1/1 "},
        {"begincidrange <00000000> <FFFFFFFF> 0 endcidrange", "", "0-FFFFFFFF>0/4 "},
        {"begincidrange <0000000000> <01> 0 endcidrange begincidchar 5 6 endcidchar", "", ""},
        {"/Identity-H usecmap", "", "0-FFFF>0/2 "},
        {"% beginbfchar\n(beginbfchar \\) <01> <02>) << /A [ {} >> beginbfchar <1> <0041> % <02>\n<0 2 ><0042>",
            "2-2>42/1 10-10>41/1 ", ""},
        {"beginbfchar <01> <0041", "1-1>41/1 ", ""},
        {"beginbfrange <01> <02> [ <0041>", "1-1>41/1 ", ""},
        {"beginbfchar <01>", "", ""},
        {"<<<>>>)(((", "", ""},
    };
    for (const auto& [text, characters, glyphs] : cases) {
        const CodeMap map{std::string_view(text)};
        EXPECT_EQ(shown(map.characters()), characters) << text;
        EXPECT_EQ(shown(map.glyphs()), glyphs) << text;
        EXPECT_FALSE(map.isVertical()) << text;
    }
}

TEST(CodeMap, tellsWhatKeepsItFromBeingUsed)
{
    EXPECT_TRUE(CodeMap("/WMode 1 def").isVertical());
    EXPECT_EQ(CodeMap("/GBK-EUC-H usecmap").base(), "GBK-EUC-H");
    EXPECT_EQ(CodeMap("/Identity-H usecmap begincidchar <0001> 2 endcidchar").base(), "Identity-H");
}

TEST(CodeMap, findsTheRangeOfACode)
{
    const CodeMap map("beginbfrange <10> <12> <0041> <14> <15> <0061> endbfrange");
    for (const std::uint32_t code : {0x0Fu, 0x13u, 0x16u})
        EXPECT_FALSE(map.characters().find(code)) << code;
    for (const std::uint32_t code : {0x10u, 0x12u, 0x14u, 0x15u})
        EXPECT_TRUE(map.characters().find(code)) << code;
}
