#include <host/pages/PageRange.h>

#include <gtest/gtest.h>

using Host::Reason;

TEST(PageRange, namesPagesAsPeopleDo)
{
    const std::tuple<const char*, std::vector<std::size_t>> cases[] = {
        {"", {0, 1, 2, 3, 4, 5, 6, 7, 8}}, {"all", {0, 1, 2, 3, 4, 5, 6, 7, 8}}, {"3", {2}}, {"2-4,9", {1, 2, 3, 8}},
        {"4-2", {3, 2, 1}}, {"r1,r9", {8, 0}}, {"r2-last", {7, 8}}, {"8-z", {7, 8}}, {"8-end", {7, 8}},
        {"odd", {0, 2, 4, 6, 8}}, {"even", {1, 3, 5, 7}}, {"2-5odd", {2, 4}}, {"5-2:even", {3, 1}}, {"1,1", {0, 0}},
    };
    for (const auto& [text, expected] : cases) {
        const auto pages = Host::pagesNamed(text, 9);
        ASSERT_TRUE(pages) << text;
        EXPECT_EQ(*pages, expected) << text;
    }
    EXPECT_TRUE(Host::pagesNamed("all", 0)->empty());
}

TEST(PageRange, refusesWhatNamesNoPage)
{
    for (const char* wrong : {"x", "1-", "-1", "1,,2", "1x", "2oddeven", "1 -2", "oddly", ",", "1-2-3"}) {
        const auto pages = Host::pagesNamed(wrong, 9);
        ASSERT_FALSE(pages) << wrong;
        EXPECT_EQ(pages.refusal().reason, Reason::WrongArgument) << wrong;
    }
    for (const char* missing : {"0", "10", "1-10", "r10", "99999999999999999999", "r0"}) {
        const auto pages = Host::pagesNamed(missing, 9);
        ASSERT_FALSE(pages) << missing;
        EXPECT_EQ(pages.refusal().reason, Reason::Missing) << missing;
    }
    EXPECT_FALSE(Host::pagesNamed("last", 0));
}
