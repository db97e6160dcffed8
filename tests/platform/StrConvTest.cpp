#include <platform/StrConv.h>
#include <platform/StringPrinter.h>

#include <tests/support/LogCapture.h>

#include <gtest/gtest.h>

using namespace Tests;

TEST(StrConv, eachTypeTakesWhatItHoldsAndNothingElse)
{
    // Digits, and whether they are an unsigned number of 32 bits, one of 64, and a signed one.
    const std::tuple<const char*, bool, bool, bool> cases[] = {
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
        {"+7", false, false, true},
        {"--7", false, false, false},
        {"A", false, false, false},
    };
    for (const auto& [digits, isUnsigned, isUnsignedLong, isSigned] : cases) {
        const auto expectNumber = [sought = text(digits)](auto number, bool isNumber) {
            EXPECT_EQ(StrConv::num(sought, &number, nullptr), isNumber) << plain(sought);
            EXPECT_TRUE(isNumber || number == 77) << "a failure leaves the output alone";
        };
        expectNumber(77u, isUnsigned);
        expectNumber(77ull, isUnsignedLong);
        expectNumber(77ll, isSigned);
    }
    long long number = 0;
    EXPECT_TRUE(StrConv::num(text("-9223372036854775808"), &number, nullptr));
    EXPECT_EQ(number, std::numeric_limits<long long>::min());
    EXPECT_FALSE(StrConv::num(nullptr, &number, nullptr));
    unsigned byte = 0;
    EXPECT_TRUE(StrConv::num(text("fF"), &byte, 16, nullptr) && byte == 255);
    EXPECT_FALSE(StrConv::num(text("8"), &byte, 8, nullptr));
}

TEST(StrConv, widthsAreMinimaAndNegativesAreTwosComplements)
{
    EXPECT_EQ(plain(StrConv::str(-129, 16, 0)), "FF7F");
    EXPECT_EQ(plain(StrConv::str(-40000, 16, 0)), "FFFF63C0");
    EXPECT_EQ(plain(StrConv::str(std::numeric_limits<long long>::min())), "-9223372036854775808");
    const Ref<StringPrinter> printer = StringPrinter::create();
    printer->hex().width(2).print(10).print(" ").print(10).print(" ").width(3).print(-5).print(" ").hex().print(-1);
    EXPECT_EQ(plain(printer->take()), "0A 10 -005 FFFFFFFFFFFFFFFF");
    EXPECT_EQ(plain(printer->take()), "");
}
