#include <document/ValueParser.h>

#include <tests/support/Documents.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

constexpr const char* refused = "(refused)";

// What the parser makes of the text of an object's value, in the words of logs.
std::string parsedFrom(const Ref<TestStripe>& stripe)
{
    ElementReader elements(*stripe);
    const Ref<PDF::Value> result = PDF::ValueParser(elements).readValue();
    return result ? plain(result->asText()) : refused;
}

std::string parsed(const std::string& value, Fault fault = {})
{
    return parsedFrom(make<TestStripe>(value, fault));
}

using Case = std::tuple<const char*, std::string, std::string>; // rule, value, and what is made of it

void check(std::initializer_list<Case> cases)
{
    for (const auto& [rule, value, text] : cases) {
        EXPECT_EQ(parsed(value), text) << rule << ": " << value;
        EXPECT_EQ(parsedFrom(make<ShowingStripe>(value)), text) << rule << ", from the bytes: " << value;
    }
}

} // namespace

TEST(ValueParser, objectsHaveOneValue)
{
    check({
        {"a number at the very end is cut off", "42", refused},
        {"a point without digits", ".5 ", "0.5"},
        {"the sign of a zero is lost", "-.5 ", "0.5"},
        {"leading zeros of a fraction are lost", "1.05 ", "1.5"},
        {"one point only", "1.2.3 ", refused},
        {"truth", "true ", "true"},
        {"null is no value of an object", "null endobj", refused},
        {"a reference is its first number", "7 0 R ", "7.0"},
        {"a comment is a word", "% comment\n7 ", refused},
        {"a comment sign is no end of a word", "7%x ", refused},
        {"a name", "/A#20B ", "A#20B"},
        {"a word before a string is dropped", "12(text) ", "text"},
        {"blanks may stand in an opener", "< \n 48656C> ", "48656C"},
        {"any character between them ends that", "<x48> ", refused},
        {"an empty hexadecimal string is a word", "<> ", refused},
        {"a lone digit is a string too", "< 7 >", "46"},
        {"control characters are blanks", std::string("\0\x01\x1F", 3) + "7\x02", "7.0"},
    });
}

TEST(ValueParser, listsHaveTheirOwnRules)
{
    check({
        {"numbers before a reference", "[1 0 2 0 R]", "[1.00.02 (0) ]"},
        {"a fraction is no id", "[1.5 0 R]", refused},
        {"nor a generation above 65535", "[1 65536 R]", refused},
        {"a negative number is cut", "[-1 -1 R]", "[4294967295 (65535) ]"},
        {"and numbers at that", "[/A 1 R]", refused},
        {"words", "[true false null]", "[truefalseNull ]"},
        {"comments end words and lines end comments", "[1%]\r2%\n3]", "[1.02.03.0 ]"},
        {"a name ends a word", "[1/A/B]", "[1.0AB ]"},
        {"a string doesn't", "[12(text)3]", "[text123.0 ]"},
        {"an array doesn't", "[1[2]3]", "[[2.0 ]13.0 ]"},
        {"a name ends at the delimiters", "[/A(b)/C<41>/D%x\n/E{ ]", refused},
        {"a lone bracket is a word of an array", "[ > ]", refused},
        {"a lone opener is dropped", "[ < 5 ]", "[5.0 ]"},
        {"a hexadecimal string begins right behind its opener", "[ < 41> ]", refused},
        {"a dictionary", "[<</A 1>>]", "[<< A -> 1.0 >> ]"},
        {"dictionaries that touch", "[<</A 1>><</B 2>>]", "[<< A -> 1.0 >><< B -> 2.0 >> ]"},
        {"a digit behind a dictionary opens a string", "[<</A 1>>41>]", "[<< A -> 1.0 >>41 ]"},
        {"a digit behind a hexadecimal string doesn't", "[<41>42 ]", "[4142.0 ]"},
        {"an array without end", "[1 2", refused},
    });
}

TEST(ValueParser, dictionariesEndAtTwoBracketsAndStreamsBeginBehindThem)
{
    const std::string end = " endobj";
    check({
        {"right behind a word", "<</K 1>>" + end, "<< K -> 1.0 >>"},
        {"behind a name", "<</K/V>>" + end, "<< K -> V >>"},
        {"behind another", "<</K<</L 1>>>>" + end, "<< K -> << L -> 1.0 >> >>"},
        {"behind a hexadecimal string", "<</K<41>>>" + end, "<< K -> 41 >>"},
        {"keys are names", "<<(K) 1>>" + end, refused},
        {"values come in pairs", "<</K 1/L>>" + end, refused},
        {"a bracket of arrays is a word", "<</K ]>>" + end, refused},
        {"a single bracket is part of a word", "<</K 1> >>" + end, refused},
        {"six more characters must follow", "<< >> endob", refused},
        {"they may be any", "<< >> xyzxyz", "<< >>"},
        {"stream data begins behind an LF", "<< >> stream\nx", "@13 << >>"},
        {"or a CR LF", "<< >> stream\r\nx", "@14 << >>"},
        {"or a CR", "<< >> stream\rx", "@13 << >>"},
        {"or nothing", "<< >> streamx", "@12 << >>"},
        {"blanks between the letters", "<< >>\ns t\nr e a m\n", "@18 << >>"},
        {"but something follows", "<< >> stream", refused},
        {"behind a CR too", "<< >> stream\r", refused},
    });
}

TEST(ValueParser, stringsAreLiteralOrHexadecimal)
{
    check({
        {"parentheses nest", "(a(b)c) ", "a(b)c"},
        {"and may be escaped", "( a \\) b ) ", " a ) b "},
        {"escapes", "(\\b\\f\\n\\r\\t\\() ", "\b\f\n\r\t("},
        {"octal digits, up to three", "(\\101\\1012\\7x) ", "AA2\7x"},
        {"of which eight bits count", "(\\501) ", "A"},
        {"octal digits end at an escape", "(\\10\\n) ", "\b\n"},
        {"the first of two backslashes is lost", "(\\\\n) ", "\n"},
        {"a raw line end", "(a\nb) ", refused},
        {"a continuation", "(a\\\nb\\\rc\\\r\nd) ", "abcd"},
        {"a second line end behind it", "(a\\\n\nb) ", refused},
        {"the flag of a CR lives for one character", "(a\\\rb\nc) ", refused},
        {"the empty string", "() ", ""},
        {"no end", "(abc", refused},
        {"raw characters above 159 stay", "(\xE9) ", "\xE9"},
        {"the undefined ones are 0", "(\x81\\215) ", std::string(2, '\0')},
        {"octal ones are those of Windows-1252", "(\\200) ", "\xAC"}, // U+20AC, cut to a byte by the test
        {"raw ones are cut to 8 bits first", "(\x93) ", "\x1C"}, // U+201C
        {"digits of both cases, blanks and others between", "<4F 6x5\n6c> ", "4F656C"},
        {"a last letter can't be", "<A> ", refused},
        {"no end", "<41", refused},
    });
}

TEST(ValueParser, namesAreGivenBackAtTheEndOfTheStripe)
{
    const Ref<TestStripe> stripe = make<TestStripe>("/Name");
    ElementReader elements(*stripe);
    EXPECT_EQ(plain(PDF::ValueParser(elements).readValue()->asText()), "Name");
    EXPECT_EQ(stripe->position, 4u);
    EXPECT_EQ(parsed("/Name ", Fault{.read = 3}), refused) << "a failing read is no end";
    EXPECT_EQ(parsed("/Name ", Fault{.seek = 0}), refused);
}

TEST(ValueParser, aStripeThatNeverEndsIsRefused)
{
    // The last character comes again and again, wherever the stripe stands.
    for (const std::string start : {" ", "x", "[ ", "[ %", "<<", "<< /K ", "<4 ", "(x", "(\\", "<< >> "}) {
        const Fault endless{.read = start.size(), .answer = Answer::Pretend, .isLasting = true};
        EXPECT_EQ(parsed(start, endless), refused) << start;
    }
}

TEST(ValueParser, messagesNameThePlaceWhereTheConstructBegins)
{
    const std::pair<std::string, Lines> cases[] = {
        {"  xyz ", {"Invalid integer value xyz in object; offset: 2h (2)"}},
        {"x.y ", {"Invalid real value x.y in object; offset: 0h (0)"}},
        {" (\\x) ",
            {"Invalid escape character 78h (120) at offset 3h (3)", "Failed to read string in object at 2h (2)"}},
        {" / ", {"Failed to read identifer in object at 2h (2)"}},
        {" < A> ",
            {"Failed to convert string to hexadecimal value: A0", "Failed to read hex string in object at 3h (3)"}},
        {"[ x]", {"Invalid integer value x in value list; offset: 2h (2)", "Failed to read array in object at 1h (1)"}},
        {"[ 1 R ]", {"Invalid object reference in array before 5h (5)", "Failed to read array in object at 1h (1)"}},
        {"[ <A>]", {"Failed to convert string to hexadecimal value: A0",
                       "Failed to read hex string in value list at offset 3h (3)",
                       "Failed to read array in object at 1h (1)"}},
        {"[ [", {"Failed to read array in array at offset 3h (3)", "Failed to read array in object at 1h (1)"}},
        {"[ (", {"Failed to read string in array at offset 3h (3)", "Failed to read array in object at 1h (1)"}},
        {"[ / ", {"Failed to read identifier in array at 3h (3)", "Failed to read array in object at 1h (1)"}},
        {"[ <<1 2>>", {"Expected identifier in dictionary at 2h (2)",
                          "Failed to read dictionary in array at offset 2h (2)",
                          "Failed to read array in object at 1h (1)"}},
        {" <</A 1.x>>", {"Invalid real value 1.x in value list; offset: 6h (6)",
                            "Failed to read dictionary in object at 1h (1)"}},
        {" << >>", {"Failed to read stream in object at 1h (1)"}},
    };
    LogCapture log;
    for (const auto& [value, lines] : cases) {
        EXPECT_EQ(parsed(value), refused) << value;
        EXPECT_EQ(log.take(), lines) << value;
    }
}
