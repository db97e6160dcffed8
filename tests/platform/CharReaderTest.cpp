#include <platform/CharReader.h>

#include <tests/support/LogCapture.h>
#include <tests/support/TestStripe.h>

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

TEST(CharReader, aFailureIsNotTheEndAndKeepsItsCode)
{
    const Fault endless{.read = 3, .answer = Answer::Pretend, .isLasting = true};
    constexpr std::uint32_t failure = TestStripe::failureCode;
    const std::tuple<const char*, Fault, std::uint32_t> cases[]
        = {{"abc", {.read = 2}, failure}, {"a\rbc", {.read = 2}, failure}, {"a\rbc", {.seek = 0}, failure},
            {"abc", endless, 77}};
    for (const auto& [file, fault, code] : cases) {
        Error::set(77);
        EXPECT_EQ(codeOf(CharReader::create(make<TestStripe>(file, fault), 0)->readLine()), code) << file;
    }
    EXPECT_FALSE(CharReader::create(nullptr, 0));
}
