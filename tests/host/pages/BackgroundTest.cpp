#include <host/pages/Background.h>

#include <tests/support/Pages.h>
#include <tests/support/SmallStack.h>
#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
using Host::BackgroundOptions;
using PDF::BackgroundMode;

namespace {

// A file of two pages with the same content.
struct File {
    std::string first = {};                // entries of the first page
    std::vector<std::string> objects = {}; // from 6 on
    std::string second = {};               // entries of the second page
    std::string root = {};                 // entries of the root of the page tree
    std::string trailer = {};

    operator std::string() const
    {
        PdfText text;
        text.trailer(trailer).object(1, "<< /Type /Catalog /Pages 2 0 R >>")
            .object(2, "<< /Type /Pages /Kids [ 3 0 R 4 0 R ] " + root + " >>")
            .object(3, "<< /Contents 5 0 R " + first + " >>")
            .object(4, "<< /Contents 5 0 R " + second + " >>")
            .stream(5, "content");
        for (std::size_t i = 0; i < objects.size(); ++i)
            text.object(unsigned(6 + i), objects[i]);
        return text;
    }
};

std::string resources(const std::string& categories)
{
    return "/Resources << " + categories + " >>";
}

std::string streamText(const std::string& data, const std::string& length)
{
    return "<< /Length " + length + " >>\nstream\n" + data + "\nendstream";
}

const std::string f1 = resources("/Font << /F1 6 0 R >>");
const std::string nothing;
const std::string differs = "page 1: Font F1 reads the same in both documents, but leads to different contents";
const std::string longStream(40000, 'x');

} // namespace

TEST(Background, refusesWhatWouldBeDrawnOtherwiseAndChangesNothing)
{
    struct Case {
        const char* rule;
        File own;
        File foreign;
        std::string words; // empty when it is accepted
        BackgroundMode mode = BackgroundMode::AllPages;
    };
    const Case cases[] = {
        {"free names", {f1, {"1"}}, {resources("/Font << /G1 6 0 R >>"), {"2"}}, nothing},
        {"equal references to equal contents", {f1, {"<< /A 7 0 R >>", streamText("data", "4")}, f1},
            {f1, {"<< /A 7 0 R >>", streamText("data", "4")}}, nothing},
        {"contents that differ after a further reference", {f1, {"<< /A [ 7 0 R ] >>", "(one)"}},
            {f1, {"<< /A [ 7 0 R ] >>", "(two)"}}, differs},
        {"a key that the other one lacks", {f1, {"<< /A 1 >>"}}, {f1, {"<< /B 1 >>"}}, differs},
        {"a longer array", {f1, {"[ 1 ]"}}, {f1, {"[ 1 2 ]"}}, differs},
        {"a last byte of stream data", {f1, {streamText(longStream + "a", "40001")}},
            {f1, {streamText(longStream + "b", "40001")}}, differs},
        {"a dictionary of a stream", {f1, {streamText("data", "4 /A 1")}}, {f1, {streamText("data", "4")}}, differs},
        {"data that can't be read", {f1, {streamText("data", "9999")}}, {f1, {streamText("data", "9999")}}, differs},
        {"a reference that leads nowhere on both sides", {f1, {}}, {f1, {}}, differs},
        {"equal direct values with references in them", {resources("/Font << /F1 << /A 6 0 R >> >>"), {"1"}},
            {resources("/Font << /F1 << /A 6 0 R >> >>"), {"2"}}, differs},
        {"a name that another category has", {resources("/XObject << /F1 6 0 R >>"), {"1"}}, {f1, {"1"}},
            "page 1: Font F1 of the other document can't be added: XObject F1 already has the name"},
        {"a name with another value", {resources("/Font << /F1 7 0 R >>"), {"1", "1"}}, {f1, {"1"}},
            "page 1: Font F1 of the other document can't be added: another Font F1 is already there"},
        {"one name that two categories bring", {}, {resources("/Font << /F1 1 >> /XObject << /F1 2 >>")}, nothing},
        {"a dictionary beside an array", {resources("/P [ ]")}, {resources("/P << >>")},
            "page 1: P of the other document can't be added: one of the two is an array and the other a dictionary"},
        {"arrays", {resources("/P [ /PDF ]")}, {resources("/P [ /Text ]")}, nothing},
        {"pages that share resources", {"/Resources 6 0 R", {"<< >>"}, "/Resources 6 0 R"}, {f1, {"1"}},
            "page 2: Font F1 of the other document can't be added: another Font F1 was added for a page that shares"},
        {"pages that share a category", {resources("/Font 6 0 R"), {"<< >>"}, resources("/Font 6 0 R")}, {f1, {"1"}},
            "page 2: Font F1"},
        {"direct values for pages that share resources", {"/Resources 6 0 R", {"<< >>"}, "/Resources 6 0 R"},
            {resources("/Font << /F1 [ 1 2 ] >>")}, nothing},
        {"a name that comes down from the root", {resources("/Font << /F1 1 >>"), {}, "", f1},
            {resources("/Font << /G1 1 >>")},
            "page 1: Font F1 of the root of the page tree can't be added: another Font F1 is already there"},
        {"names of the root in place of foreign ones", {"", {"1"}, "", f1}, {f1, {"2"}}, differs},
        {"inherited resources and a name of the root", {"", {"1"}, "", f1}, {"", {"2"}, "", f1},
            "page 1: in the root of the page tree, Font F1 reads the same"},
        {"inherited resources that a page has in another way", {"", {"1"}, f1}, {"", {"2"}, "", f1},
            "page 2: Font F1 is not the one that the page of the other document inherits"},
        {"inherited resources that a page has, too", {"", {"1"}, f1}, {"", {"1"}, "", f1}, nothing},
        {"a page that is none", {"", {}, "/Kids [ ]"}, {}, "page 2: this is a branch of the page tree"},
        {"resources that lead nowhere", {"", {}, "/Resources 9 0 R"}, {f1, {"1"}}, "page 2: the Contents or Resources"},
        {"resources of a page that needs none, after one that gets some", {"", {}, "/Resources 9 0 R"},
            {resources("/Font << /F1 1 >>")}, "page 2: the Contents or Resources", BackgroundMode::PagePairs},
        {"an encrypted document", {}, {"", {}, "", "", "/Encrypt << >>"}, "the other document is encrypted"},
        {"a category that is a number", {"", {}, resources("/Font 6 0 R")}, {f1, {"1"}},
            "page 2: Font of the resources is neither a dictionary nor an array"},
        {"foreign resources that lead nowhere", {}, {"/Resources 9 0 R"}, "page 1: page 1 of the other document: the"},
        {"a page that gets none", {"", {"1"}, f1}, {f1, {"2"}}, nothing, BackgroundMode::FirstPageOnly},
        {"pages by their pairs", {"", {"1"}, f1}, {f1, {"2"}, f1}, "page 2: Font F1 reads the same",
            BackgroundMode::PagePairs},
        {"the last foreign page, which brings nothing", {"", {"1"}, f1}, {f1, {"2"}}, nothing,
            BackgroundMode::PagePairsRepeatLast},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.rule);
        const Ref<PDF::Document> document = open(c.own);
        const Ref<PDF::Document> foreign = open(c.foreign);
        ASSERT_TRUE(document && foreign);
        const std::string before = written(document);
        const auto done = Host::mergeBackground(document, foreign, c.mode);
        EXPECT_EQ(bool(done), c.words.empty()) << (done ? "" : done.refusal().message);
        if (!done) {
            EXPECT_EQ(done.refusal().message.substr(0, c.words.size()), c.words);
            EXPECT_EQ(written(document), before);
        }
        // What is gone on with ends as it does in the library.
        const Ref<PDF::Document> twin = open(c.own);
        const bool isDoable = twin->addBackground(open(c.foreign), c.mode);
        const auto forced = Host::mergeBackground(open(c.own), open(c.foreign), c.mode, BackgroundOptions{true});
        EXPECT_EQ(bool(forced), isDoable);
        if (done)
            EXPECT_EQ(written(document), written(twin));
        else if (forced)
            EXPECT_EQ(forced->warnings.back(), done.refusal().message);
        else
            EXPECT_EQ(forced.refusal().message, done.refusal().message);
    }
}

TEST(Background, warnsOfCopiesAndOfWhatPagesDoNotSee)
{
    const std::string copies = "the page of the other document has its own resources, so each of 2 pages gets"
                               " its own copies of what they refer to";
    const std::string gray = resources("/ColorSpace << /DefaultGray 1 >>");
    const std::string colors = " has different default color spaces from those that its content or that of the other"
                               " document was made for, so colors may change";
    const std::tuple<const char*, File, File, BackgroundMode, std::string> cases[] = {
        {"each page gets copies", {}, {f1, {"1"}}, BackgroundMode::AllPages, copies},
        {"one page does", {}, {f1, {"1"}}, BackgroundMode::FirstPageOnly, ""},
        {"direct values refer to nothing", {}, {resources("/Font << /F1 1 >>")}, BackgroundMode::AllPages, ""},
        {"inherited resources are merged once", {}, {"", {"1"}, "", f1}, BackgroundMode::AllPages, ""},
        {"pages with resources of their own don't see them", {resources(""), {}, resources("")}, {"", {"1"}, "", f1},
            BackgroundMode::AllPages,
            "page 1 (and 1 more) has resources of its own and so won't show Font F1 and whatever else the page of the"
            " other document inherits from its page tree"},
        {"foreign default color spaces", {}, {gray}, BackgroundMode::AllPages, "page 1 (and 1 more)" + colors},
        {"those of a page", {"", {}, gray}, {resources("")}, BackgroundMode::AllPages, "page 2" + colors},
        {"those of a page beneath which nothing needs resources", {"", {}, gray}, {}, BackgroundMode::AllPages,
            "page 2" + colors},
        {"those of both", {gray, {}, gray}, {gray}, BackgroundMode::AllPages, ""},
        {"those of the root, which come down to one page", {resources(""), {}, "", gray}, {gray},
            BackgroundMode::AllPages, "page 1" + colors},
        {"those of the foreign root, which come into the other one", {}, {"", {}, "", gray}, BackgroundMode::AllPages,
            "page 1 (and 1 more)" + colors},
        {"those of the foreign root, which one page has already", {gray}, {"", {}, "", gray}, BackgroundMode::AllPages,
            "page 2" + colors},
        {"those of both roots", {"", {}, "", gray}, {"", {}, "", gray}, BackgroundMode::AllPages, ""},
    };
    for (const auto& [rule, own, foreign, mode, warning] : cases) {
        SCOPED_TRACE(rule);
        const auto done = Host::mergeBackground(open(own), open(foreign), mode);
        ASSERT_TRUE(done);
        EXPECT_EQ(done->warnings, Lines(warning.empty() ? 0 : 1, warning));
        EXPECT_EQ(done->pageCount, mode == BackgroundMode::FirstPageOnly ? 1u : 2u);
    }
}

TEST(Background, refusesWithTheCodesOfTheLibrary)
{
    const Ref<PDF::Document> document = open(File());
    EXPECT_EQ(Host::mergeBackground(nullptr, document, BackgroundMode::AllPages).refusal().code, ErrNullArgument);
    EXPECT_EQ(Host::mergeBackground(document, nullptr, BackgroundMode::AllPages).refusal().code, ErrNullArgument);
    EXPECT_EQ(Host::mergeBackground(document, document, BackgroundMode(7)).refusal().code, ErrInvalidArgument);
    const auto without = Host::mergeBackground(document, open(PdfText().pages()), BackgroundMode::AllPages);
    EXPECT_EQ(without.refusal().code, ErrForeignPage);
    const std::string noTree = damaged(File(), "/Type /Pages", "/Type /Pagez");
    const auto unusable = Host::mergeBackground(document, open(noTree), BackgroundMode::AllPages);
    EXPECT_EQ(unusable.refusal().code, 0x706u);
    EXPECT_EQ(unusable.refusal().message, "the page tree has no usable root or Kids, in the other document");
    EXPECT_FALSE(document->changed());
    const auto dangling = Host::mergeBackground(document, open(File{f1}), BackgroundMode::AllPages);
    EXPECT_EQ(dangling.refusal().code, ErrNoResource);
    EXPECT_EQ(dangling.refusal().message.substr(0, 26), "resources can't be copied:");
}

// Two rings of different lengths lead back to themselves at different places: each value of one would be
// compared with each of the other.
TEST(Background, comparesLongRingsInTimeThatGrowsWithThem)
{
    const auto ring = [](unsigned length) {
        File file{f1};
        for (unsigned i = 0; i < length; ++i)
            file.objects.push_back("<< /Next " + std::to_string(6 + (i + 1) % length) + " 0 R >>");
        return file;
    };
    onSmallStack([&ring] {
        const Ref<PDF::Document> document = open(ring(10000));
        EXPECT_TRUE(Host::mergeBackground(document, open(ring(9999)), BackgroundMode::FirstPageOnly));
        File other = ring(9999);
        other.objects[9000] = "<< /Other 6 0 R >>";
        EXPECT_FALSE(Host::mergeBackground(open(ring(10000)), open(other), BackgroundMode::FirstPageOnly));
    });
}
