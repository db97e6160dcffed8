#include <values/Exact.h>

#include <tests/support/Documents.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace Tests;

namespace {

// The value that a file has in an array.
Ref<PDF::Value> inFile(const std::string& value)
{
    const Ref<PDF::Document> document = open(PdfText().object(1, "[ " + value + " ]"));
    const auto array = document ? PDF::valueAs<PDF::Array>(PDF::objectsOf(document).front()->value()) : nullptr;
    return array ? array->get(0) : nullptr;
}

} // namespace

TEST(Exact, numbersAreWhatTheFormatMeans)
{
    const std::tuple<std::string, std::string, double> cases[] = {
        {"1.05", "1.05", 1.05},
        {"-0.5", "-0.5", -0.5},
        {"-.50", "-0.5", -0.5},
        {"+007.0", "7", 7},
        {"5.", "5", 5},
        {"-0.0", "0", 0},
        {"-3.25", "-3.25", -3.25},
        {"0.012040", "0.01204", 0.01204},
        {"-9223372036854775808", "-9223372036854775808", -9223372036854775808.0},
        {"1." + std::string(300, '0') + "1", "1." + std::string(300, '0') + "1", 1},
        {"." + std::string(400, '0') + "1", "0." + std::string(400, '0') + "1", 0},
    };
    for (const auto& [word, decimal, number] : cases) {
        const auto value = PDF::valueAs<PDF::Number>(inFile(word));
        ASSERT_TRUE(value) << word;
        EXPECT_EQ(plain(PDF::exactDecimal(*value)), decimal) << word;
        EXPECT_EQ(PDF::exactDouble(*value), number) << word;
    }
    const auto otherwise = PDF::valueAs<PDF::Number>(inFile("1.-5"));
    EXPECT_FALSE(PDF::exactDecimal(*otherwise));
    EXPECT_TRUE(std::isnan(PDF::exactDouble(*otherwise)));
}

TEST(Exact, stringsAreWhatTheFormatMeans)
{
    const std::tuple<std::string, std::string, bool> cases[] = { // string, its bytes, whether it keeps its source
        {"(plain)", "plain", false},
        {"(a\\134b\\351\\200)", "a\\b\351\200", false},
        {"(a\351)", "a\351", false},
        {"(a\\\nb\\(c\\051)", "ab(c)", false},
        {"(a\\\\b)", "a\\b", true},
        {"(a\\\\\\(b\\)\\n)", "a\\(b)\n", true},
        {"(\x80\x9F\x81)", "\x80\x9F\x81", true},
        {"(\\201x\\0)", std::string("\x81x\0", 3), true},
        {"(\\201\\\r\nx)", "\x81x", true},
        {"<48656C>", "Hel", false},
        {"<485>", "HP", false},
        {"<9>", "\x90", false},
    };
    for (const auto& [source, meant, hasSource] : cases) {
        const auto string = PDF::valueAs<PDF::String>(inFile(source));
        ASSERT_TRUE(string) << source;
        const auto exact = PDF::exactBytes(*string);
        ASSERT_TRUE(exact) << source;
        EXPECT_EQ(std::string(exact->begin(), exact->end()), meant) << source;
        const auto kept = dynamic_cast<const PDF::StringObj&>(*string).source();
        EXPECT_EQ(kept ? std::string(kept->data(), kept->data() + kept->size()) : "", hasSource ? source : "");
        for (const auto& [other, bytes, _] : cases)
            EXPECT_EQ(PDF::isSameExactly(inFile(source), inFile(other)), source == other) << source << " and " << other;
    }
    EXPECT_FALSE(PDF::exactBytes(*make<PDF::StringObj>(::String::create(U"\u4E2D")))) << "no byte";
    EXPECT_EQ(PDF::exactBytes(*PDF::String::create(::String::create(U"\u4E2D"))),
        (std::vector<std::uint8_t>{0xFE, 0xFF, 0x4E, 0x2D}));
}

TEST(Exact, stringsAreTheSameWhenTheyAreReadBackTheSame)
{
    const auto made = [](std::u32string_view text) -> Ref<PDF::Value> {
        return make<PDF::StringObj>(::String::create(text));
    };
    EXPECT_TRUE(PDF::isSameExactly(made(U"\u0080"), inFile("(\\200)")));
    EXPECT_TRUE(PDF::isSameExactly(made(U"\u0081"), inFile("(\\201)")));
    EXPECT_FALSE(PDF::isSameExactly(made(U"\u0081"), inFile("(\\000)")));
    EXPECT_TRUE(PDF::isSameExactly(made(U"a\\b"), inFile("(a\\134b)")));
    EXPECT_FALSE(PDF::isSameExactly(made(U"a\\b"), inFile("(a\\\\b)")));
    EXPECT_FALSE(PDF::isSameExactly(made(U"A"), inFile("<41>")));
    EXPECT_TRUE(PDF::isSameExactly(inFile("(\\\\n<)"), inFile("(\\\\n\\074)")));
    EXPECT_FALSE(PDF::isSameExactly(inFile("(a\\\\) b)"), inFile("(a\\\\) \\142)"))) << "of one the format has no b";
}

TEST(Exact, holdersAreComparedInDepth)
{
    const std::string values[] = {"[ 1.05 ]", "[ 1.5 ]", "[ 1.05 2 ]", "<< /K [ (a\\\\b) ] >>", "<< /K [ (a\\b) ] >>",
        "<< /L [ (a\\\\b) ] >>", "<< /K [ (a\\\\b) ] /L 1 >>", "/K", "/L", "true", "false", "null", "1 0 R", "1 1 R"};
    for (const std::string& a : values)
        for (const std::string& b : values)
            EXPECT_EQ(PDF::isSameExactly(inFile(a), inFile(b)), a == b) << a << " and " << b;
    EXPECT_FALSE(PDF::isSameExactly(nullptr, nullptr));
}
