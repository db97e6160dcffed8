#include <platform/Heap.h>
#include <platform/String.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

const Ref<String> wideText = String::create(U"a\u20ACb\U0001F600");

} // namespace

TEST(RuntimeString, textOfAnyWidthIsOneText)
{
    // A text keeps narrow and wide characters alike, and the two mix in every operation.
    const Ref<String> narrow = String::create("ab\xE9");
    const Ref<String> joined = narrow->concat(wideText)->append('!')->append(0x416u);
    EXPECT_EQ(joined->length(), 9u);
    EXPECT_EQ(joined->charAt(8), 0x416u);
    EXPECT_TRUE(joined->substring(3, 4)->equals(wideText));
    // What is cut out of a wide text may be narrow, and still equals and sorts as such.
    EXPECT_TRUE(joined->substring(0, 3)->equals(narrow));
    EXPECT_EQ(joined->substring(7, String::all)->length(), 2u);
    EXPECT_EQ(joined->substring(100, 5)->length(), 0u);
    // A search answers the length when there is nothing.
    EXPECT_EQ(joined->find(String::create("\xE9" "a"), 1), 2u);
    EXPECT_EQ(joined->find(String::create("a text longer than the other one"), 0), 9u);
    EXPECT_EQ(joined->find(nullptr, 0), 9u);
    EXPECT_EQ(joined->find('a', 1), 3u);
    EXPECT_EQ(joined->find('a', 99), 9u);
    EXPECT_EQ(joined->find(0x20AC, 0), 4u);
}

TEST(RuntimeString, orderIsByCodePoint)
{
    const Ref<String> ascending[] = {String::create(), String::create("A"), String::create("AB"), String::create("B"),
        String::create("a"), String::create("\xE9"), String::create(0x20ACu), String::create(0x1F600u)};
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            EXPECT_EQ(ascending[i]->greaterOrEqual(ascending[j]), i >= j) << i << " " << j;
            EXPECT_EQ(ascending[i]->equals(ascending[j]), i == j) << i << " " << j;
        }
    EXPECT_TRUE(ascending[0]->greaterOrEqual(nullptr));
    EXPECT_FALSE(ascending[0]->equals(Ref<String>()));
    EXPECT_FALSE(ascending[1]->equals("AB"));
    EXPECT_FALSE(ascending[2]->equals("A"));
}

TEST(RuntimeString, surrogatesPairAndLoneOnesStay)
{
    const unsigned short units[] = {0x41, 0xD83D, 0xDE00, 0xDC00, 0xD800};
    const Ref<String> text = String::create(units, 0, 5);
    ASSERT_EQ(text->length(), 4u);
    EXPECT_EQ(text->charAt(1), 0x1F600u);
    EXPECT_EQ(text->charAt(2), 0xDC00u);
    EXPECT_EQ(text->charAt(3), 0xD800u);
    std::size_t length = 0;
    unsigned short* back = text->toUtf16(&length);
    EXPECT_EQ(std::vector<unsigned short>(back, back + length), std::vector<unsigned short>(units, units + 5));
    Heap::free(back, Heap::Array, nullptr);
}
