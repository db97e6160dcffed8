#include <platform/CharReader.h>

#include "../support/LogCapture.h"
#include "../support/TestStripe.h"

#include <gtest/gtest.h>

using namespace Tests;

TEST(CharReader, linesEndAtEachKindOfTerminatorAndNoFurther)
{
    const std::string text = "a\rb\r\nc\n\nd\r";
    const std::pair<const char*, std::uint64_t> lines[] = {{"a", 2}, {"b", 5}, {"c", 7}, {"", 8}, {"d", 10}};
    for (const Ref<TestStripe>& stripe : {make<TestStripe>(text), Ref<TestStripe>(make<ShowingStripe>(text))}) {
        const Ref<CharReader> reader = CharReader::create(stripe, 0);
        for (const auto& [line, behind] : lines) {
            EXPECT_EQ(plain(reader->readLine()), line);
            EXPECT_EQ(stripe->position, behind) << line;
        }
        EXPECT_FALSE(reader->readLine());
        stripe->seek(9);
        EXPECT_EQ(plain(reader->readLine()), "") << "a lone terminator at the end is an empty line";
    }
    EXPECT_EQ(plain(CharReader::create(make<TestStripe>("last"), 0)->readLine()), "last");
}

TEST(CharReader, aFailingReadOrSeekIsNotTheEnd)
{
    for (const auto& [file, fault] : {std::pair("abc", Fault{.read = 2}), {"a\rbc", Fault{.read = 2}},
             {"a\rbc", Fault{.seek = 0}}})
        EXPECT_FALSE(CharReader::create(make<TestStripe>(file, fault), 0)->readLine());
    EXPECT_FALSE(CharReader::create(nullptr, 0));
}

TEST(CharReader, aLineThatNeverEndsIsAFailure)
{
    const Fault endless{.read = 3, .answer = Answer::Pretend, .isLasting = true};
    EXPECT_FALSE(CharReader::create(make<TestStripe>("abc", endless), 0)->readLine());
}
