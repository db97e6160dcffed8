#include <host/losses/FormatReader.h>

#include <tests/support/SmallStack.h>

#include <gtest/gtest.h>

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
    const std::tuple<const char*, const char*, unsigned> cases[] = {
        {"null", "0null", 0},
        {"true%comment", "btrue", 0},
        {"+007", "n7", 0},
        {"-0.0", "n0", 0},
        {"-.002", "n-0.002", FormatValue::LeadingZeros},
        {".", "n0", 0},
        {"--5", "?--5", 0},
        {"1.-5", "?1.-5", 0},
        {"/A#20\x01\x80 x", "/A#20\x01\x80", 0},
        {" %no value\n 7 % c\r 0\r\nR", "r7 0", 0},
        {"7 0 Ray", "n7", 0},
        {"7.0 0 R", "r7 0", 0},
        {"(a(b)\\)c)", "sa(b))c", 0},
        {"(a\\\r\nb\r\nc\rd\\\ne)", "sab\nc\nde", 0},
        {"(\\1019\\53\\777\\q\\n)", "sA9+\xFFq\n", 0},
        {"(\x7F\xA0\\200)", "s\x7F\xA0\x80", 0},
        {"(\\235\\236)", "s\x9D\x9E", FormatValue::UndefinedOctals},
        {"(\\\\)", "s\\", FormatValue::DoubledBackslashes | FormatValue::Backslash},
        {"<5C 4 1>", "s\\A", 0},
        {"<4 1 5>", "sAP", FormatValue::OddDigits},
        {"[1 0 R[2]3(x)/N<41>]", "a[r1 0 a[n2] n3 sx /N sA]", FormatValue::GluedWord},
        {"[1 2 0 R R]", "a[n1 r2 0 ?R]", 0},
        {"<</A/B/C<</D 1>>>>", "d[/A /B /C d[/D n1]]", 0},
        {"<</A>>", "?[/A]", 0},
        {"<<1 2>>", "?[n1 n2]", 0},
        {"[ > ) ]", "a[? ?]", 0},
        {"[1", "?[n1]", 0},
        {"(a\\", "?a", 0},
        {"<4", "?", 0},
        {"", "?", 0},
    };
    for (const auto& [text, meaning, traits] : cases) {
        EXPECT_EQ(shown(readAll(text)), meaning) << text;
        EXPECT_EQ(readAll(text).traits, traits) << text;
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
