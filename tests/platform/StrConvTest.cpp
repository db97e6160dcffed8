#include <platform/StrConv.h>
#include <platform/StringPrinter.h>
#include <platform/StringUtil.h>

#include "../support/LogCapture.h"

#include <gtest/gtest.h>

using Tests::plain;

TEST(StrConv, eachTypeTakesWhatItHoldsAndNothingElse)
{
    struct Case {
        const char* text;
        bool isUnsigned, isUnsignedLong, isSigned;
    };
    const Case cases[] = {
        {"0", true, true, true},
        {"0042", true, true, true},
        {"4294967295", true, true, true},
        {"4294967296", false, true, true},
        {"9223372036854775807", false, true, true},
        {"9223372036854775808", false, true, false},
        {"-9223372036854775808", false, false, true},
        {"-9223372036854775809", false, false, false},
        {"18446744073709551615", false, true, false},
        {"18446744073709551616", false, false, false},
        {"", false, false, true},
        {"-", false, false, true},
        {"+", false, false, true},
        {"+7", false, false, true},
        {"--7", false, false, false},
        {" 7", false, false, false},
        {"7 ", false, false, false},
        {"7.5", false, false, false},
        {"1e3", false, false, false},
        {"A", false, false, false},
    };
    for (const Case& c : cases) {
        const Ref<String> text = String::create(c.text);
        unsigned small = 77;
        unsigned long long large = 77;
        long long withSign = 77;
        EXPECT_EQ(StrConv::num(text, &small, nullptr), c.isUnsigned) << c.text;
        EXPECT_EQ(StrConv::num(text, &large, nullptr), c.isUnsignedLong) << c.text;
        EXPECT_EQ(StrConv::num(text, &withSign, nullptr), c.isSigned) << c.text;
        // A failure leaves the output alone.
        EXPECT_TRUE(c.isUnsigned || small == 77) << c.text;
        EXPECT_TRUE(c.isUnsignedLong || large == 77) << c.text;
        EXPECT_TRUE(c.isSigned || withSign == 77) << c.text;
    }
    long long number = 0;
    EXPECT_TRUE(StrConv::num(String::create("-9223372036854775808"), &number, nullptr));
    EXPECT_EQ(number, std::numeric_limits<long long>::min());
    EXPECT_FALSE(StrConv::num(nullptr, &number, nullptr));
    unsigned byte = 0;
    EXPECT_TRUE(StrConv::num(String::create("fF"), &byte, 16, nullptr));
    EXPECT_EQ(byte, 255u);
    EXPECT_FALSE(StrConv::num(String::create("8"), &byte, 8, nullptr));
}

TEST(StrConv, widthsAreMinimaAndNegativesAreTwosComplements)
{
    EXPECT_EQ(plain(StrConv::str(0, 10, 10)), "0000000000");
    EXPECT_EQ(plain(StrConv::str(123456ull, 10, 5)), "123456");
    EXPECT_EQ(plain(StrConv::str(127, 8, 3)), "177");
    EXPECT_EQ(plain(StrConv::str(-128, 8, 3)), "200");
    EXPECT_EQ(plain(StrConv::str(-1, 8, 3)), "377");
    EXPECT_EQ(plain(StrConv::str(-129, 16, 0)), "FF7F");
    EXPECT_EQ(plain(StrConv::str(-40000, 16, 0)), "FFFF63C0");
    EXPECT_EQ(plain(StrConv::str(std::numeric_limits<long long>::min())), "-9223372036854775808");
    const Ref<StringPrinter> printer = StringPrinter::create();
    printer->hex().width(2).print(10).print(" ").print(10).print(" ").width(3).print(-5).print(" ").hex().print(-1);
    EXPECT_EQ(plain(printer->take()), "0A 10 -005 FFFFFFFFFFFFFFFF");
    EXPECT_EQ(plain(printer->take()), "");
}

TEST(StringUtil, piecesAreNeverEmptyAndTrimmingTakesControls)
{
    const auto pieces = StringUtil::split(String::create("  0000000016 00000  n "), ' ', 0);
    ASSERT_EQ(pieces->size(), 3u);
    EXPECT_EQ(plain(pieces->get(2)), "n");
    EXPECT_FALSE(pieces->get(3));
    EXPECT_EQ(StringUtil::split(String::create(" "), ' ', 0)->size(), 0u);
    EXPECT_FALSE(StringUtil::split(nullptr, ' ', 0));
    EXPECT_EQ(plain(StringUtil::split(String::create("a.b.c"), '.', 2)->get(1)), "b.c");
    EXPECT_EQ(plain(StringUtil::trim(String::create("\t a b\x0C\r "))), "a b");
    EXPECT_TRUE(StringUtil::trim(String::create(" \n"))->isEmpty());
    EXPECT_FALSE(StringUtil::trim(nullptr));
}
