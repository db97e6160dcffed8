#include <platform/Heap.h>
#include <platform/String.h>

#include <gtest/gtest.h>

#include <vector>

TEST(RuntimeString, narrowAndWideCharactersMix)
{
    const Ref<String> narrow = String::create("ab\xE9");
    const Ref<String> wide = String::create(U"a\u20ACb\U0001F600");
    const Ref<String> joined = narrow->concat(wide)->append('!')->append(0x416u);
    EXPECT_EQ(joined->charAt(8), 0x416u);
    EXPECT_TRUE(joined->substring(3, 4)->equals(wide));
    EXPECT_TRUE(joined->substring(0, 3)->equals(narrow)) << "what is cut out of a wide text may be narrow";
    EXPECT_EQ(joined->find(String::create("\xE9" "a"), 1), 2u);
    EXPECT_EQ(joined->find(0x20AC, 0), 4u);
    EXPECT_EQ(joined->find(nullptr, 0), 9u) << "a search answers the length when there is nothing";
    EXPECT_TRUE(joined->greaterOrEqual(narrow) && !narrow->greaterOrEqual(joined));
    EXPECT_TRUE(String::create()->greaterOrEqual(nullptr));
    EXPECT_FALSE(narrow->equals(Ref<String>()) || narrow->equals("ab"));
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
