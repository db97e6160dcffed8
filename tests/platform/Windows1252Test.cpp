#include <platform/Windows_1252.h>

#include <gtest/gtest.h>

TEST(Windows1252, everyByteSurvivesAndOtherCharactersAreMarked)
{
    const Libraries::Strings::Encodings::ANSI::Windows_1252 encoding(true);
    for (unsigned byte = 0; byte < 256; ++byte)
        EXPECT_EQ(encoding.byte(encoding.codePoint(std::uint8_t(byte))), byte);
    EXPECT_EQ(encoding.codePoint(0x81), 0x81u) << "undefined bytes stand for their own number";
    EXPECT_EQ(encoding.byte(0x80), 0x80u) << "below 256 a character without a byte gives its low 8 bits";
    EXPECT_EQ(encoding.byte(0x141), '?');
    EXPECT_FALSE(encoding.hasByte(0x80) || encoding.hasByte(0x141));
    EXPECT_TRUE(encoding.hasByte(0x81) && encoding.hasByte(0x20AC));
}
