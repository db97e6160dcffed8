#include <host/pages/Geometry.h>
#include <host/pages/PageTree.h>

#include <tests/support/Pages.h>

#include <gtest/gtest.h>

using namespace Tests;
using Host::PageBox;
using Host::Rectangle;

namespace {

std::string box(const Rectangle& box)
{
    std::string text;
    for (const double number : {box.left, box.bottom, box.right, box.top})
        text += (text.empty() ? "" : " ") + Host::decimalText(number);
    return text;
}

} // namespace

TEST(PageTree, walksTreesOfAnyDepthInOrderWithWhatPagesInherit)
{
    const auto document = open(PdfText()
        .object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R 4 0 R ] /MediaBox 9 0 R /Resources << /A 1 >> /Rotate 90 >>")
        .object(3, "<< /Type /Pages /Kids [ 5 0 R 6 0 R ] /CropBox [ 300 10 20 200 ] /Rotate -90 >>")
        .object(4, "<< /Type /Page /MediaBox [ 0 0 5 6 ] /Rotate 450 /UserUnit 2 >>")
        .object(5, "<< /Type /Page /Resources << /B 1 >> >>")
        .object(6, "<< /Type /Page /Rotate 180 /TrimBox [ 30 30 999 100 ] /CropBox null >>")
        .object(9, "[ 0 0 400.05 800 ]"));
    const auto tree = Host::pages(document);
    ASSERT_TRUE(tree);
    EXPECT_TRUE(tree->problems.empty());
    ASSERT_EQ(tree->pages.size(), 3u);
    const Host::Page& first = tree->pages[0];
    EXPECT_EQ(first.object->id(), 5u);
    EXPECT_EQ(valueText(document, first.resources), "<< /B 1 >>");
    EXPECT_FALSE(first.isInheritingResources);
    EXPECT_EQ(first.rotation, 270);
    EXPECT_EQ(box(first.box(PageBox::Media)), "0 0 400.05 800");
    EXPECT_EQ(box(first.box(PageBox::Trim)), "20 10 300 200");
    const Host::Page& second = tree->pages[1];
    EXPECT_EQ(second.rotation, 180);
    EXPECT_EQ(box(second.box(PageBox::Trim)), "30 30 400.05 100");
    EXPECT_EQ(box(second.box(PageBox::Art)), "20 10 300 200");
    EXPECT_TRUE(second.isInheritingResources);
    const Host::Page& last = tree->pages[2];
    EXPECT_EQ(last.rotation, 90);
    EXPECT_EQ(last.userUnit, 2);
    EXPECT_EQ(box(last.box(PageBox::Art)), "0 0 5 6");
}

TEST(PageTree, tellsWhatIsWrongAndGoesOn)
{
    struct Case {
        const char* rule;
        std::string kids;  // of the root, 2; 3 is a page, 4 a node of it
        std::string entries; // of the page
        std::size_t count;
        std::string problem;
    };
    const std::string sheet = "/MediaBox [ 0 0 9 9 ] ";
    const Case cases[] = {
        {"a circle", "2 0 R 3 0 R", sheet, 1,
            "before page 1: a node of the page tree is listed twice or in a circle and was skipped"},
        {"a node twice", "4 0 R 4 0 R", sheet, 1,
            "before page 2: a node of the page tree is listed twice or in a circle and was skipped"},
        {"a page twice", "3 0 R 3 0 R", sheet, 2, "page 2: is in the page tree twice"},
        {"nothing", "99 0 R 3 0 R", sheet, 1, "before page 1: a kid of the page tree is no dictionary and was skipped"},
        {"a wrong kind", "(a) 3 0 R", sheet, 1, "before page 1: a kid of the page tree is no dictionary and was skipped"},
        {"a node without kids", "<< /Type /Pages >> 3 0 R", sheet, 1,
            "before page 1: a node of the page tree has no kids and was skipped"},
        {"no box", "3 0 R", "", 1,
            "page 1: MediaBox is missing or not four numbers, and 612 by 792 points are assumed"},
        {"a huge box", "3 0 R", "/MediaBox [ 0 0 9 99999999999999 ]", 1,
            "page 1: MediaBox is missing or not four numbers, and 612 by 792 points are assumed"},
        {"a box without area", "3 0 R", "/MediaBox [ 5 5 5 9 ]", 1, "page 1: MediaBox has no area"},
        {"a turn by a part", "3 0 R", sheet + "/Rotate 37", 1,
            "page 1: Rotate is no multiple of 90 and has no effect"},
        {"a box elsewhere", "3 0 R", sheet + "/CropBox [ 20 20 30 30 ]", 1,
            "page 1: CropBox is no rectangle on the sheet and has no effect"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.rule);
        const auto tree = Host::pages(open(PdfText().pages(each.kids)
            .object(3, "<< /Type /Page " + each.entries + " >>").object(4, "<< /Kids [ 3 0 R ] >>")));
        ASSERT_TRUE(tree);
        EXPECT_EQ(tree->pages.size(), each.count);
        ASSERT_EQ(tree->problems.size(), 1u);
        EXPECT_EQ(tree->problems[0], each.problem);
    }
}
