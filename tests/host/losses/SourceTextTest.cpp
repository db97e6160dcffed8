#include <host/losses/FormatReader.h>

#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

TEST(SourceText, manyBlanksAndLongCommentsAreNotHeld)
{
    const TestFolder folder;
    const std::string blanks(1000000, ' ');
    const std::string bytes = "/A" + blanks + "%" + blanks + "\n[ (b)" + blanks + "7 ]";
    SourceText text(*FileStripe::open(folder.put("file", bytes)));
    text.moveTo(0);
    FormatReader reader(text, 0);
    EXPECT_EQ(reader.readValue().text, "A");
    const FormatValue list = reader.readValue();
    ASSERT_EQ(list.parts.size(), 2u);
    EXPECT_EQ(list.parts[0].text + list.parts[1].text, "b7");
    EXPECT_EQ(reader.position(), bytes.size());
    EXPECT_LT(text.held(), 400000u);
    const auto comments = reader.takeComments();
    ASSERT_EQ(comments.size(), 1u);
    EXPECT_EQ(comments[0].end - comments[0].begin, blanks.size() + 1);
    for (const std::size_t place : {std::size_t(0), std::size_t(500000), comments[0].begin, list.begin, bytes.size() - 3})
        EXPECT_EQ(text.at(place), bytes[place]) << place;
    EXPECT_EQ(text.slice(list.begin, list.end, 5), "[ (b)");
    EXPECT_EQ(text.slice(comments[0].begin, comments[0].end, 3), "%  ");
}
