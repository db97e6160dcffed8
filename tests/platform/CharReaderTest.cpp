#include <platform/CharReader.h>

#include "../support/LogCapture.h"
#include "../support/TestStripe.h"

#include <gtest/gtest.h>

using namespace Tests;

TEST(CharReader, linesEndAtEachKindOfTerminatorAndNoFurther)
{
    const Ref<TestStripe> stripe = make<TestStripe>("a\rb\r\nc\n\nd\r");
    const Ref<CharReader> reader = CharReader::create(stripe, 0);
    const std::pair<const char*, std::uint64_t> lines[] = {{"a", 2}, {"b", 5}, {"c", 7}, {"", 8}, {"d", 10}};
    for (const auto& [line, behind] : lines) {
        EXPECT_EQ(plain(reader->readLine()), line);
        EXPECT_EQ(stripe->position, behind) << line;
    }
    EXPECT_FALSE(reader->readLine());
    stripe->seek(9);
    EXPECT_EQ(plain(reader->readLine()), "") << "a lone terminator at the end is an empty line";
    EXPECT_EQ(plain(CharReader::create(make<TestStripe>("last"), 0)->readLine()), "last");
}

TEST(CharReader, piecesEndAtABlankOrWithTheLine)
{
    const Ref<TestStripe> stripe = make<TestStripe>("  1 0  obj <<  >>\nnext");
    const Ref<CharReader> reader = CharReader::create(stripe, 0);
    std::u32string line;
    EXPECT_TRUE(reader->readPieces(line, 4));
    EXPECT_EQ(line, U"  1 0  obj <<");
    EXPECT_EQ(stripe->position, 14u);
    EXPECT_TRUE(reader->readPieces(line, 4));
    EXPECT_EQ(line, U" >>");
    EXPECT_TRUE(reader->readPieces(line, 4));
    EXPECT_EQ(line, U"next");
    EXPECT_FALSE(reader->readPieces(line, 4));
}

TEST(CharReader, aFailingReadOrSeekIsNotTheEnd)
{
    for (const auto& [file, fault] : {std::pair("abc", Fault{.read = 2}), {"a\rbc", Fault{.read = 2}},
             {"a\rbc", Fault{.seek = 0}}})
        EXPECT_FALSE(CharReader::create(make<TestStripe>(file, fault), 0)->readLine());
    EXPECT_FALSE(CharReader::create(nullptr, 0));
}
