#include <host/losses/FormatReader.h>

#include <tests/support/SmallStack.h>

#include <gtest/gtest.h>

#include <cstring>

using namespace Host;

namespace {

// A character for the kind and what the value means, its parts in brackets.
std::string shown(const FormatValue& meaning)
{
    std::string text = "0bn/srad?"[std::size_t(meaning.kind)] + meaning.text;
    for (const FormatValue& part : meaning.parts)
        text += (&part == &meaning.parts.front() ? "[" : " ") + shown(part);
    return meaning.parts.empty() ? text : text + "]";
}

FormatValue readAll(const std::string& text)
{
    SourceText source(text);
    FormatReader reader(source, 0);
    return reader.readValue();
}

} // namespace

TEST(FormatReader, followsTheFormat)
{
    const std::pair<const char*, const char*> cases[] = {
        {"null", "0null"},
        {"true%comment", "btrue"},
        {"+007", "n7"},
        {"-0.0", "n0"},
        {"-.002", "n-0.002"},
        {".", "n0"},
        {"--5", "?--5"},
        {"1.-5", "?1.-5"},
        {"/A#20\x01\x80 x", "/A#20\x01\x80"},
        {" %no value\n 7 % c\r 0\r\nR", "r7 0"},
        {"7 0 Ray", "n7"},
        {"7.0 0 R", "r7 0"},
        {"(a(b)\\)c)", "sa(b))c"},
        {"(a\\\r\nb\r\nc\rd\\\ne)", "sab\nc\nde"},
        {"(\\1019\\53\\777\\q\\n)", "sA9+\xFFq\n"},
        {"(\x7F\xA0\\200)", "s\x7F\xA0\x80"},
        {"(\\235\\236)", "s\x9D\x9E"},
        {"(\\\\)", "s\\"},
        {"<5C 4 1>", "s\\A"},
        {"<4 1 5>", "sAP"},
        {"[1 0 R[2]3(x)/N<41>]", "a[r1 0 a[n2] n3 sx /N sA]"},
        {"[1 2 0 R R]", "a[n1 r2 0 ?R]"},
        {"<</A/B/C<</D 1>>>>", "d[/A /B /C d[/D n1]]"},
        {"<</A>>", "?[/A]"},
        {"<<1 2>>", "?[n1 n2]"},
        {"[ > ) ]", "a[? ?]"},
        {"[1", "?[n1]"},
        {"(a\\", "?a"},
        {"<4", "?"},
        {"", "?"},
    };
    for (const auto& [text, meaning] : cases) {
        EXPECT_EQ(shown(readAll(text)), meaning) << text;
        EXPECT_EQ(readAll(text).isGlued, std::strstr(text, "R[2]3(") != nullptr) << text;
    }
}

TEST(FormatReader, getsThroughAnyNesting)
{
    Tests::onSmallStack([] {
        for (const std::string piece : {"[", "<<", "<</A", "[<<", "(", "[]>>"}) {
            std::string text;
            while (text.size() < 100'000)
                text += piece;
            SourceText source(text);
            FormatReader reader(source, 0);
            while (reader.position() < text.size())
                reader.readValue();
        }
    });
}
