#include <values/NumberText.h>

#include <gtest/gtest.h>

namespace PDF = Libraries::Files::PDF;

// The memory takes the room that the kind of a value leaves.
static_assert(sizeof(PDF::NumberObj) == 6 * sizeof(void*));

TEST(NumberText, numbersKeepEveryWord)
{
    const std::string words[] = {"0", "00", "-0", "+0", "-", "+", ".", "-.", "+.", "5.", ".5", "0.5", "00.5", "-.05",
        "-0.0", "+1", "-01", "1.50", "1.05", "1.000", "1.-5", "-1.+5", "1.-", "1.-0", "9223372036854775807",
        "-9223372036854775808.9223372036854775807", "0." + std::string(255, '0') + "1", "0." + std::string(256, '0'),
        std::string(256, '0') + "1", std::string(257, '0') + "1"};
    const auto spelled = [](const PDF::Number& number) {
        MemOutStrm text;
        PDF::appendExactly(number, text);
        return std::string(text.data(), text.data() + text.size());
    };
    for (const std::string& word : words) {
        const Ref<PDF::NumberObj> number = PDF::numberFrom(std::u32string(word.begin(), word.end()));
        ASSERT_TRUE(number) << word;
        EXPECT_EQ(spelled(*number), word);
        EXPECT_EQ(spelled(*PDF::copyExactly(*number)), word);
        number->setIntPart(7);
        EXPECT_EQ(spelled(*number).substr(0, 1), "7") << "what was remembered of " << word;
        EXPECT_EQ(number->spelling(), PDF::NumberObj::Spelling());
    }
    for (const char32_t* word : {U"1.2.3", U"--1", U"9223372036854775808", U"1.9223372036854775808", U"1-", U"x"})
        EXPECT_FALSE(PDF::numberFrom(word));
}
