#include <import/PackedObjects.h>

#include <gtest/gtest.h>

using Import::PackedObjects;

namespace {

// What is said of the first of two objects, of which the second one is the number 7.
PackedObjects::Text textOf(const std::string& value)
{
    const std::string list = "1 0 2 " + std::to_string(value.size()) + " ";
    const std::string data = list + value + "7";
    const PackedObjects objects(data, 2, list.size());
    return objects.textOf(objects.members().at(0));
}

} // namespace

TEST(PackedObjects, tellWhereAValueEnds)
{
    struct Case {
        const char* value;
        bool isWhole;
    };
    const Case cases[] = {
        {"<< /A [ (a\\)]) <5d> / ] /B << >> >> % a comment\n ", true},
        {"(a(b)c)", true},
        {"-12.5 ", true},
        {"/Name ", true},
        {"true false ", false},
        {"[ 1 ", false},
        {"(a", false},
        {"<< ]", false},
        {"<< >> >>", false},
        {"<4g> ", false},
        {"% nothing\n", false},
    };
    for (const Case& row : cases)
        EXPECT_EQ(textOf(row.value).isWhole, row.isWhole) << row.value;
    EXPECT_EQ(textOf("[ 1 ").length, 5u) << "what doesn't end takes all";
    EXPECT_EQ(textOf("1   ").length, 4u) << "blanks are read, too";
    EXPECT_EQ(textOf("1   2   R  % a").length, 14u);
}

TEST(PackedObjects, knowReferences)
{
    const auto reference = textOf("12 3 R % there\n").reference;
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->id, 12);
    EXPECT_EQ(reference->generation, 3);
    for (const char* value : {"12 3 ", "12 3 R 4 ", "[ 12 3 R ] ", "12 R "})
        EXPECT_FALSE(textOf(value).reference) << value;
}

TEST(PackedObjects, haveTheLastOfAnIdThatIsListedTwice)
{
    const std::string data = "5 0 6 2 5 4 9 x 1 2 3";
    const PackedObjects objects(data, 9, 16);
    ASSERT_EQ(objects.members().size(), 2u) << "the list ends where it is no good";
    EXPECT_EQ(objects.members()[0].id, 5);
    EXPECT_EQ(objects.members()[0].offset, 20u);
    EXPECT_TRUE(objects.textOf(objects.members()[0]).isWhole);
    EXPECT_TRUE(objects.textOf(objects.members()[1]).isWhole) << "an entry that isn't in force ends another one, too";
}
