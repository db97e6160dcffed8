#include <tests/support/Pages.h>
#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
using PDF::BackgroundMode;

namespace {

constexpr BackgroundMode unknownMode = BackgroundMode(7);

// Three pages of every form of content; new objects begin with 9.
PdfText threePages()
{
    return PdfText().pages("3 0 R 4 0 R 5 0 R").object(3, "<< /Contents 6 0 R >>")
        .object(4, "<< /Contents [ 6 0 R (direct) ] >>").object(5, "<< >>").stream(6, "own")
        .object(7, "7").object(8, "8");
}

// Two pages with the streams 5 and 6, 6 and 7.
PdfText twoForeignPages()
{
    return PdfText("\n", "2.0").pages("3 0 R 4 0 R").object(3, "<< /Contents [ 6 0 R 5 0 R 6 0 R ] >>")
        .object(4, "<< /Contents 7 0 R >>").stream(5, "five").stream(6, "six").stream(7, "seven");
}

// Everything that a call may change, but for the next id.
std::string stateOf(const Ref<PDF::Document>& document)
{
    std::string result;
    for (std::size_t i = 0; i < document->getPages().size(); ++i)
        result += pageEntry(document, i, "Contents") + " with " + pageEntry(document, i, "Resources") + "; ";
    const Ref<PDF::Dictionary> root = document->getPageCatalog()->valueAsDictionary();
    result += "root " + valueText(document, root->find(text("Resources"))) + "; ids " + idsFrom(document, 9);
    return result + (document->changed() ? "; changed" : "; unchanged");
}

} // namespace

TEST(PageBackground, eachModePutsForeignContentFirst)
{
    const std::string none = "none with none; ";
    const std::string first = "[ 10 0 R 9 0 R 10 0 R 6 0 R ] with none; "; // the streams 6, 5 and 6 before it
    const std::string second = "[ 11 0 R 6 0 R (direct) ] with none; ";
    const std::string kept = "[ 6 0 R (direct) ] with none; ";
    const std::pair<BackgroundMode, std::string> cases[] = {
        {BackgroundMode::FirstPageOnly, first + kept + none + "root none; ids 9 10"},
        {BackgroundMode::AllPages, first + "[ 10 0 R 9 0 R 10 0 R 6 0 R (direct) ] with none; "
                "[ 10 0 R 9 0 R 10 0 R ] with none; root none; ids 9 10"},
        {BackgroundMode::PagePairs, first + second + none + "root none; ids 9 10 11"},
        {BackgroundMode::PagePairsRepeatLast, first + second + "[ 11 0 R ] with none; root none; ids 9 10 11"},
        {unknownMode, "6 0 R with none; " + kept + none + "root none; ids 9 10 11"},
    };
    for (const auto& [mode, state] : cases) {
        const Ref<PDF::Document> document = open(threePages());
        ASSERT_TRUE(document->addBackground(open(twoForeignPages()), mode));
        EXPECT_EQ(stateOf(document), state + "; changed");
        EXPECT_EQ(objectText(document, 9), "<< /Length 4 >>\nstream\nfive\nendstream");
        EXPECT_EQ(document->version(), 13u);
    }
}

TEST(PageBackground, aSecondBackgroundLiesBeneathTheFirstAlsoInAWrittenFile)
{
    const Ref<PDF::Document> document = open(threePages());
    ASSERT_TRUE(document->addBackground(open(twoForeignPages()), BackgroundMode::AllPages));
    ASSERT_TRUE(document->addBackground(open(twoForeignPages()), BackgroundMode::PagePairs));
    ASSERT_TRUE(document->addBackground(open(threePages()), BackgroundMode::FirstPageOnly)) << "of an older version";
    const Ref<PDF::Document> again = open(written(document));
    EXPECT_EQ(pageEntry(again, 1, "Contents"), "[ 13 0 R 10 0 R 9 0 R 10 0 R 6 0 R (direct) ]");
    EXPECT_EQ(objectText(again, 13), "<< /Length 5 >>\nstream\nseven\nendstream");
    EXPECT_EQ(again->version(), 13u);
}

TEST(PageBackground, aDocumentWithoutPagesStaysAsItIs)
{
    const Ref<PDF::Document> document = open(PdfText().pages());
    Error::set(77);
    EXPECT_TRUE(document->addBackground(open(twoForeignPages()), BackgroundMode::AllPages));
    EXPECT_EQ(Error::get(), 77u);
    EXPECT_EQ(document->version(), 8u);
    EXPECT_FALSE(document->changed());
    EXPECT_EQ(codeOf(document->addBackground(nullptr, BackgroundMode::AllPages)), ErrNullArgument);
}

TEST(PageBackground, onlyTheFirstForeignPageIsReadForOneBackground)
{
    const std::string foreign = damaged(twoForeignPages(), "/Contents 7 0 R", "/Contents 9 0 R");
    const LogCapture log;
    EXPECT_TRUE(open(threePages())->addBackground(open(foreign), BackgroundMode::FirstPageOnly));
    EXPECT_TRUE(open(threePages())->addBackground(open(foreign), BackgroundMode::AllPages));
    EXPECT_EQ(log.lines, Lines(2, "Background has more than 1 page: 2h (2)"));
}

TEST(PageBackground, resourcesOfTheRootComeDownBeforeForeignOnes)
{
    const PdfText file = PdfText().pages("3 0 R 4 0 R", "/Resources << /Font << /R 8 0 R >> >>")
                             .object(3, "<< /Resources << /Font << /P 1 >> >> >>").object(4, "<< >>").object(8, "/F");
    const auto add = [](const PdfText& own, const PdfText& foreign) {
        const Ref<PDF::Document> document = open(own);
        EXPECT_TRUE(document->addBackground(open(foreign), BackgroundMode::AllPages));
        return stateOf(document);
    };
    EXPECT_EQ(add(file, PdfText().pages("3 0 R").object(3, "<< /Contents [ ] /Resources << /Font << /N 2 >> >> >>")),
        "[ ] with << /Font << /N 2 /P 1 /R 8 0 R >> >>; [ ] with << /Font << /N 2 /R 8 0 R >> >>; "
        "root << /Font << /R 8 0 R >> >>; ids ; changed");
    // Those that the foreign page inherits go into the root, and no page sees them that has its own.
    const PdfText inherited
        = PdfText().pages("3 0 R", "/Resources << /Font << /I 3 >> >>").object(3, "<< /Contents [ ] >>");
    EXPECT_EQ(add(file, inherited),
        "[ ] with << /Font << /P 1 >> >>; [ ] with none; root << /Font << /I 3 /R 8 0 R >> >>; ids ; changed");
    EXPECT_EQ(add(PdfText().pages("3 0 R").object(3, "<< >>"), inherited),
        "[ ] with none; root << /Font << /I 3 >> >>; ids ; changed");
}

TEST(PageBackground, pagesThatShareResourcesTakeDirectValuesButNoReferences)
{
    const Ref<PDF::Document> document = open(PdfText().pages("3 0 R 4 0 R").object(3, "<< /Resources 5 0 R >>")
                                                 .object(4, "<< /Resources 5 0 R >>").object(5, "<< >>"));
    const auto addFont = [&](const std::string& font) {
        const PdfText foreign = PdfText().pages("3 0 R").object(4, "(font)").object(
            3, "<< /Contents [ ] /Resources << /Font << " + font + " >> >> >>");
        return document->addBackground(open(foreign), BackgroundMode::AllPages);
    };
    EXPECT_TRUE(addFont("/F 1"));
    EXPECT_FALSE(addFont("/G 4 0 R")) << "the second page finds the reference to the first one's clone";
    EXPECT_EQ(objectText(document, 5), "<< /Font << /F 1 /G 6 0 R >> >>");
}

TEST(PageBackground, aDocumentMayLieBeneathItself)
{
    const Ref<PDF::Document> document = open(PdfText().pages("3 0 R 4 0 R")
            .object(3, "<< /Contents 5 0 R /Resources << /Font << /F 4 0 R >> /P [ /PDF ] >> >>")
            .object(4, "<< /Contents 5 0 R >>").stream(5, "own", "/Self 5 0 R"));
    ASSERT_TRUE(document->addBackground(document, BackgroundMode::AllPages));
    EXPECT_EQ(pageEntry(document, 0, "Contents"), "[ 6 0 R 5 0 R ]");
    EXPECT_EQ(pageEntry(document, 1, "Resources"), "<< /Font << /F 4 0 R >> /P [ ] >>");
    EXPECT_EQ(objectText(document, 6), "<< /Length 3 /Self 5 0 R >>\nstream\nown\nendstream");
}

TEST(PageBackground, aFaultInTheForeignPagesChangesNothing)
{
    // What in the foreign file becomes what, and the code and the last line then.
    const std::tuple<std::string, std::string, std::uint32_t, const char*> cases[] = {
        {"[ 3 0 R 4 0 R ]", "[             ]", ErrForeignPage, "Foreign document has no pages"},
        {"/Type /Pages", "/Type /Pagea", 0x706, "Failed to retrieve pages object"},
        {"/Contents 7", "/Contentz 7", ErrForeignPage, "Foreign page has no contents"},
        {"<< /Contents 7 0 R >>", "7                    ", ErrForeignContent,
            "Failed to retrieve dictionary of foreign page 1h (1)"},
        {"/Contents 7", "/Contents 9", ErrForeignContent, "Failed to resolve content stream of foreign page"},
        {"/Contents 7", "/Contents 3", ErrForeignContent, "Content stream of foreign page is not of type stream"},
        {"7 0 R", "7    ", ErrForeignContent, "Foreign page content's has unexpected type: 3h (3)"},
        {"5 0 R", "(fiv)", ErrForeignContent, "Content element 1h (1) of foreign page has unexpected type: 4h (4)"},
        {"5 0 R", "9 0 R", ErrForeignContent, "Failed to resolve element 1h (1) of foreign page"},
        {"5 0 R", "4 0 R", ErrForeignContent,
            "Content stream of foreign page is not of type stream for element 1h (1)"},
    };
    for (const auto& [from, to, code, line] : cases)
        for (const BackgroundMode mode : {BackgroundMode::PagePairs, unknownMode}) {
            SCOPED_TRACE(from + " becomes " + to);
            const Ref<PDF::Document> document = open(threePages());
            const std::string before = stateOf(document);
            LogCapture log;
            EXPECT_EQ(codeOf(document->addBackground(open(damaged(twoForeignPages(), from, to)), mode)), code);
            EXPECT_EQ(log.lines.empty() ? "" : log.lines.back(), line);
            EXPECT_EQ(stateOf(document), before);
            EXPECT_EQ(document->version(), 8u);
            EXPECT_EQ(nextId(document), 9u);
        }
}

// Each row makes one step of the work fail for the second of two pages, and tells what stays changed.
TEST(PageBackground, aFailureLeavesWhatItsStepPromises)
{
    struct File {
        std::string page = "<< /Contents 5 0 R >>"; // the second one
        std::string root = "";                      // entries of the root of the page tree
        std::string stream = "/Length 0";           // the dictionary of stream 7
        std::string first = "<< /Contents 5 0 R /Resources << /Font << /F 8 0 R >> >> >>";

        std::string text() const
        {
            return PdfText().pages("3 0 R 4 0 R", root).object(3, first).object(4, page)
                .stream(5, "five", "/Extra 8 0 R").object(7, "<< " + stream + " >>\nstream\nx\nendstream")
                .object(8, "8");
        }
    };
    const std::string noResources = "<< /Contents 5 0 R >>";
    const std::string merged = "5 0 R with << /Font << /F 9 0 R >> >>; ";
    const std::string same = "5 0 R with none; ";
    constexpr std::uint32_t unseen = 0; // what failed keeps a further call from adding anything
    // The step, both files, the code and the line, and what is left: state and next id.
    const std::tuple<const char*, File, File, std::uint32_t, const char*, std::string, std::uint32_t> cases[] = {
        {"the page list", {.root = "/Kids 3"}, {}, ErrBadPages, "Pages object has no valid Kids entry",
            "root none; ids ; unchanged", unseen},
        {"resources of the root", {.root = "/Resources 6 0 R"}, {}, ErrBadPages,
            "Failed to retrieve page catalog resource dictionary", same + same + "root 6 0 R; ids ; unchanged", unseen},
        {"a page", {"(page)"}, {}, ErrBadContents, "Failed to retrieve page dictionary for page 4 (0)",
            merged + "no dictionary with no dictionary; root none; ids 9; changed", 10},
        {"its resources", {"<< /Resources 8 0 R >>"}, {}, ErrBadContents,
            "Failed to retrieve resources for page 4 (0)", merged + "none with 8 0 R; root none; ids 9; changed", 10},
        {"those of the foreign page", {}, {"<< /Contents 5 0 R /Resources 9 >>"}, ErrBadContents,
            "Failed to retrieve resources for foreign page 1h (1)", merged + same + "root none; ids 9; changed", 10},
        {"the root's copied down",
            {"<< /Resources << /Font << /R 3 >> >> >>", "/Resources << /Font << /A 1 /R 2 >> >>"},
            {"<< /Contents 5 0 R /Resources << >> >>"}, ErrNoResource,
            "Failed to integrate page catalog resources into page 4 (0)",
            "5 0 R with << /Font << /A 1 /F 9 0 R /R 2 >> >>; none with << /Font << /A 1 /R 3 >> >>; "
            "root << /Font << /A 1 /R 2 >> >>; ids 9; changed", 10},
        {"the foreign ones merged", {"<< /Resources << /Font << /F 1 >> >> >>"},
            {"<< /Contents 5 0 R /Resources << /Font << /A 8 0 R /F 2 >> >> >>"}, ErrNoResource,
            "Failed to add resources of foreign page 1h (1) to page 4 (0)",
            merged + "none with << /Font << /A 10 0 R /F 1 >> >>; root none; ids 9 10; changed", 11},
        {"those of the foreign root", {}, {noResources, "/Resources 9"}, ErrBadPages,
            "Failed to retrieve foreign page catalog resource dictionary",
            merged + same + "root none; ids 9; changed", 10},
        {"those merged", {},
            {noResources, "/Resources << /Font << /G 8 0 R /H 7 0 R >> >>", "/Length 1 /A 8 0 R /B 9 0 R"},
            ErrNoResource, "Failed to add resources to page catalog resource dictionary",
            merged + same + "root << /Font << /G 10 0 R >> >>; ids 9 10; changed", 12},
        {"the data of a stream", {}, {"<< /Contents 7 0 R >>", "", "/NoLength 1"}, ErrForeignStreamData,
            "Failed to retrieve foreign stream", merged + same + "root none; ids 9 10; changed", 12},
        {"its clone", {}, {"<< /Contents 7 0 R >>", "", "/Length 1 /A 8 0 R /B 9 0 R"}, ErrForeignStreamAdd,
            "Failed to add foreign stream", merged + same + "root none; ids 9 10; changed", 13},
        {"the content of a page", {"<< /Contents 3 >>"}, {noResources}, ErrNoResource, "Failed to update page 4 (0)",
            merged + "3 with none; root none; ids 9 10 11; changed", 12},
        {"and a page before had none", {.page = "<< /Contents 3 >>", .first = "<< >>"}, {noResources}, ErrNoResource,
            "Failed to restore contents of page 3 (0)",
            "[ 11 0 R ] with << /Font << /F 9 0 R >> >>; 3 with none; root none; ids 9 10 11; changed", 12},
    };
    for (const auto& [step, ownFile, foreign, code, line, state, next] : cases) {
        SCOPED_TRACE(step);
        File own = ownFile;
        if (own.first == File().first)
            own.first = noResources;
        const Ref<PDF::Document> document = open(own.text());
        LogCapture log;
        EXPECT_EQ(codeOf(document->addBackground(open(foreign.text()), BackgroundMode::PagePairs)), code);
        EXPECT_TRUE(log.has(line)) << (log.lines.empty() ? "" : log.lines.back());
        EXPECT_EQ(document->version(), 8u);
        EXPECT_EQ(stateOf(document), state);
        EXPECT_TRUE(next == unseen || nextId(document) == next);
    }
}
