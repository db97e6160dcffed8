#include <host/fonts/TrueTypeProgram.h>

#include <tests/support/FontPrograms.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

using Codes = TrueTypeProgram::Codes;

} // namespace

TEST(TrueTypeProgram, findsGlyphsByTheTablesOfEachKind)
{
    const std::string groups = bigEndian(4, {0xC0000, 40, 0, 2, 0x41, 0x43, 5, 0x1F600, 0x1F601, 8});
    // A segment whose glyphs are in a list after the offsets: 0x41 to 0x43 have 3, none, 7, all moved by 1.
    const std::string listed = words({4, 40, 0, 4, 0, 0, 0, 0x43, 0xFFFF, 0, 0x41, 0xFFFF, 1, 1, 4, 0, 3, 0, 7});
    const std::string bytes = words({0, 262, 0}) + std::string(0x41, 0) + "\5" + std::string(190, 0);
    const std::tuple<const char*, std::string, std::vector<std::uint32_t>> cases[] = {
        {"format 0", bytes, {0, 5, 0, 0, 0, 0}},
        {"format 4", segments({{0x41, 2}, {0x43, 9}}), {0, 2, 0, 9, 0, 0}},
        {"format 4 with a list", listed, {0, 4, 0, 8, 0, 0}},
        {"format 6", codesFrom(0x41, {4, 0, 6}), {0, 4, 0, 6, 0, 0}},
        {"format 12", groups, {0, 5, 6, 7, 9, 0}},
        {"another format", words({14, 0, 1, 1}), {0, 0, 0, 0, 0, 0}},
        {"no table", "", {0, 0, 0, 0, 0, 0}},
        {"a table cut short", words({4, 40, 0, 4000}), {0, 0, 0, 0, 0, 0}},
    };
    for (const auto& [rule, table, expected] : cases) {
        const std::string program = trueType("xx", {{3, 1, table}});
        const auto read = TrueTypeProgram::read(program);
        ASSERT_TRUE(read) << rule;
        std::vector<std::uint32_t> found;
        for (const std::uint32_t code : {0x40u, 0x41u, 0x42u, 0x43u, 0x1F601u, 0x20000u})
            found.push_back(read->find(Codes::Unicode, code));
        EXPECT_EQ(found, expected) << rule;
        EXPECT_EQ(read->find(Codes::Symbol, 0x41), 0u) << rule;
    }
}

TEST(TrueTypeProgram, tellsWhichGlyphsPaint)
{
    const std::string names = bigEndian(4, {0x20000}) + std::string(28, 0) + words({3, 36, 258, 259}) + "\3one\3two";
    const std::string program = trueType("xx-", {{1, 0, codesFrom(1, {1})}, {3, 0, codesFrom(0xF001, {2})}}, names);
    const auto read = TrueTypeProgram::read(program);
    EXPECT_EQ(read->state(0), GlyphState::Missing) << "the glyph for what is missing";
    EXPECT_EQ(read->state(1), GlyphState::Drawn);
    EXPECT_EQ(read->state(2), GlyphState::Blank);
    EXPECT_EQ(read->state(3), GlyphState::Missing);
    EXPECT_EQ(read->find(Codes::MacOs, 1), 1u);
    EXPECT_EQ(read->find(Codes::Symbol, 0xF001), 2u);
    EXPECT_EQ(read->find("one"), 1u);
    EXPECT_EQ(read->find("two"), 2u);
    EXPECT_EQ(read->find("three"), 0u);
    EXPECT_EQ(TrueTypeProgram::read(container({{"CFF ", "inside"}}, "OTTO"))->compact(), "inside");
    EXPECT_FALSE(TrueTypeProgram::read(container({{"head", ""}})));
    const auto cut = TrueTypeProgram::read(std::string_view(program).substr(0, program.size() - 60));
    EXPECT_TRUE(!cut || cut->state(1) != GlyphState::Drawn || cut->state(2) != GlyphState::Drawn);
}
