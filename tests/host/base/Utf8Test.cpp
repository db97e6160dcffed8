#include <host/base/Utf8.h>
#include <platform/Error.h>

#include <gtest/gtest.h>

using namespace Host;

TEST(Utf8, theFirstAndTheLastOfEveryLengthSurvive)
{
    for (const char32_t c : {0u, 0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xD7FFu, 0xE000u, 0xFFFFu, 0x10000u, 0x10FFFFu}) {
        const std::u32string text = {U'a', c, U'b'};
        const std::string bytes = toUtf8(text);
        EXPECT_EQ(bytes.size(), 2u + (c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4));
        const Ref<::String> read = fromUtf8(bytes);
        ASSERT_TRUE(read) << unsigned(c);
        EXPECT_TRUE(read->equals(::String::create(text))) << unsigned(c);
    }
    EXPECT_EQ(toUtf8(U"\u20AC"), "\xE2\x82\xAC");
}

TEST(Utf8, whatIsNoUtf8IsRefused)
{
    for (const char* bytes : {"\x80", "a\xC3", "\xC3(", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xE2\x82",
             "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"})
        EXPECT_FALSE(fromUtf8(bytes)) << bytes;
    EXPECT_EQ(Error::get(), ErrInvalidArgument);
    const char32_t unpaired[] = {0xD800, 0x110000};
    EXPECT_EQ(toUtf8(std::u32string_view(unpaired, 2)), "\xEF\xBF\xBD\xEF\xBF\xBD");
}
