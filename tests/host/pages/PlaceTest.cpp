#include <host/pages/Place.h>

#include <document/ExactWriting.h>
#include <document/Resolve.h>
#include <tests/support/Pages.h>
#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
using Host::Layer;
using Host::Placement;

namespace {

// Pages of these entries, from object 10 on; `objects` are what they refer to, with their numbers.
struct Pages {
    std::vector<std::string> pages = {};
    std::vector<std::pair<unsigned, std::string>> objects = {};
    std::string root = "/MediaBox [ 0 0 100 200 ]";
    std::string catalog = {};

    operator std::string() const
    {
        PdfText text;
        std::string kids;
        for (std::size_t i = 0; i < pages.size(); ++i)
            kids += std::to_string(10 + i) + " 0 R ";
        text.object(1, "<< /Type /Catalog /Pages 2 0 R " + catalog + " >>")
            .object(2, "<< /Type /Pages /Kids [ " + kids + "] " + root + " >>");
        for (const auto& [id, object] : objects)
            text.object(id, object);
        for (std::size_t i = 0; i < pages.size(); ++i)
            text.object(unsigned(10 + i), "<< /Type /Page " + pages[i] + " >>");
        for (unsigned id = 3; id < 10; ++id)
            if (std::none_of(objects.begin(), objects.end(), [id](const auto& each) { return each.first == id; }))
                text.object(id, "0");
        return text;
    }
};

std::string stream(const std::string& data, const std::string& entries = "")
{
    return "<< /Length " + std::to_string(data.size()) + " " + entries + " >>\nstream\n" + data + "\nendstream";
}

const std::string letterhead
    = Pages{{"/Contents 3 0 R /Resources << /Font << /F1 4 0 R >> >>"}, {{3, stream("head")}, {4, "(font)"}}};

std::string page(const Ref<PDF::Document>& document, std::size_t index = 0)
{
    return valueText(document, Host::pages(document)->pages[index].dictionary);
}

std::string refused(const Host::Result<Host::PlaceResult>& result)
{
    return result ? "done" : result.refusal().message;
}

} // namespace

TEST(Place, oneXObjectGoesBeneathAllPages)
{
    const auto document = Tests::open(Pages{{"/Contents 3 0 R", "/Contents [ 3 0 R 99 0 R null ]", "", "/Contents 4 0 R"},
        {{3, stream("own")}, {4, "[ 3 0 R ]"}}});
    auto foreign = Tests::open(letterhead);
    const auto placed = Host::place(document, foreign);
    foreign = nullptr;
    ASSERT_TRUE(placed) << placed.refusal().message;
    EXPECT_EQ(placed->pageCount, 4u);
    EXPECT_EQ(idsFrom(document, 14), "14 15 16 17 18");
    EXPECT_EQ(page(document), "<< /Contents [ 17 0 R 3 0 R ] /Resources 18 0 R /Type /Page >>");
    EXPECT_EQ(page(document, 1), page(document));
    EXPECT_EQ(page(document, 2), "<< /Contents 17 0 R /Resources 18 0 R /Type /Page >>");
    EXPECT_EQ(drawn(document, 3), "q /Fx1 Do Q|own|");
    EXPECT_EQ(objectText(document, 18), "<< /XObject << /Fx1 16 0 R >> >>");
    EXPECT_EQ(objectText(document, 15), "<< /Font << /F1 14 0 R >> >>");
}

TEST(Place, theSameLetterheadAgainIsTheSameXObject)
{
    const auto document = Tests::open(Pages{{"/Contents 3 0 R", "/Contents 3 0 R"}, {{3, stream("own")}}});
    Placement odd{.pages = "odd"};
    Placement even{.pages = "even", .layer = Layer::Above, .fit = Host::Fit::None, .offsetX = 5};
    ASSERT_TRUE(Host::place(document, Tests::open(letterhead), odd));
    const std::size_t before = PDF::objectsOf(document).size();
    ASSERT_TRUE(Host::place(document, Tests::open(letterhead), even));
    EXPECT_EQ(PDF::objectsOf(document).size(), before + 4) << "three streams and resources";
    EXPECT_EQ(drawn(document, 0), "q /Fx1 Do Q|own|");
    EXPECT_EQ(drawn(document, 1), "q|own|Q |q 1 0 0 1 5 0 cm /Fx1 Do Q|");
}

TEST(Place, resourcesGetOneEntryUnderAFreeName)
{
    const auto document = Tests::open(Pages{
        {"/Resources << /Font << /Fx7 3 0 R >> >>", "/Resources 4 0 R", "/Resources 4 0 R", "", "",
            "/Resources << /XObject 6 0 R >>", "/Resources << /XObject 6 0 R >>"},
        {{4, "<< /XObject << /Im 3 0 R >> >>"}, {5, "<< /ProcSet [ /PDF ] >>"}, {6, "<< /Im 3 0 R >>"}},
        "/MediaBox [ 0 0 9 9 ] /Resources 5 0 R"});
    ASSERT_TRUE(Host::place(document, Tests::open(letterhead)));
    const std::string mine = "/Fx8 19 0 R";
    EXPECT_EQ(pageEntry(document, 0, "Resources"), "<< /Font << /Fx7 3 0 R >> /XObject << " + mine + " >> >>");
    EXPECT_EQ(pageEntry(document, 1, "Resources"), "4 0 R");
    EXPECT_EQ(objectText(document, 4), "<< /XObject << " + mine + " /Im 3 0 R >> >>");
    EXPECT_EQ(objectText(document, 5), "<< /ProcSet [ /PDF ] >>");
    EXPECT_EQ(pageEntry(document, 3, "Resources"), pageEntry(document, 4, "Resources"));
    EXPECT_EQ(objectText(document, 21), "<< /ProcSet [ /PDF ] /XObject << " + mine + " >> >>");
    EXPECT_EQ(objectText(document, 6), "<< " + mine + " /Im 3 0 R >>");
}

TEST(Place, thePageIsPlacedAsAViewerShowsIt)
{
    struct Case {
        const char* rule;
        std::string own;     // entries of the page
        std::string foreign; // of the foreign one, 100 by 200
        Placement placement;
        std::string matrix;
    };
    const std::string small = "/MediaBox [ 10 10 60 110 ]";
    const std::string large = "/MediaBox [ 0 0 300 600 ]";
    const Placement exact{.fit = Host::Fit::None, .anchor = Host::Anchor::LowerLeft};
    const Case cases[] = {
        {"the same size", "", "", {}, ""},
        {"shrunk to fit", small, "", {}, "0.5 0 0 0.5 10 10"},
        {"in the middle", large, "", {}, "1 0 0 1 100 200"},
        {"as large as fits", large, "", {.fit = Host::Fit::Scale}, "3 0 0 3 0 0"},
        {"as it is, at the corner", small, "", exact, "1 0 0 1 10 10"},
        {"the page is turned", "/Rotate 90", "", exact, "0 1 -1 0 100 0"},
        {"both are turned", "/Rotate 90", "/Rotate 90", exact, "0 1 -1 0 0 0"},
        {"the foreign page is turned", "", "/Rotate 270", exact, "1 0 0 1 200 0"},
        {"turned on the way", "", "", {.fit = Host::Fit::None, .anchor = Host::Anchor::LowerLeft, .rotation = 180},
            "-1 0 0 -1 100 200"},
        {"at a corner, with an offset", large, "", {.anchor = Host::Anchor::UpperRight, .offsetX = -5, .offsetY = -7},
            "1 0 0 1 195 393"},
        {"an offset as it is shown", "/Rotate 180", "", {.offsetX = 5, .offsetY = 7}, "-1 0 0 -1 95 193"},
        {"larger units", "/UserUnit 2", "", {}, "0.5 0 0 0.5 25 50"},
        {"of the foreign page", "", "/UserUnit 2", exact, "2 0 0 2 0 0"},
        {"boxes of its own", "/TrimBox [ 50 100 100 200 ]", "/CropBox [ 10 20 100 200 ] /ArtBox [ 50 100 100 200 ]",
            {.foreignBox = Host::PageBox::Art}, ""},
    };
    for (const Case& each : cases) {
        const auto document = Tests::open(Pages{{each.own}, {}, "/MediaBox [ 0 0 100 200 ]"});
        const auto foreign = Tests::open(Pages{{each.foreign}, {}, "/MediaBox [ 0 0 100 200 ]"});
        const auto placed = Host::place(document, foreign, each.placement);
        ASSERT_TRUE(placed) << each.rule << placed.refusal().message;
        const std::string matrix = each.matrix.empty() ? "" : each.matrix + " cm ";
        EXPECT_EQ(drawn(document), "q " + matrix + "/Fx1 Do Q|") << each.rule;
    }
}

TEST(Place, whatPagesLeaveOpenStaysInside)
{
    const auto foreign = Tests::open(letterhead);
    const std::pair<const char*, const char*> cases[] = {
        {"1 g", "q|1 g|Q |q /Fx1 Do Q|"},
        {"q q 1 g", "q|q q 1 g|Q Q Q |q /Fx1 Do Q|"},
        {"Q 1 g", "q /Fx2 Do Q|q /Fx1 Do Q|"},
        {"BT", "q /Fx2 Do Q|q /Fx1 Do Q|"},
    };
    for (const auto& [content, expected] : cases) {
        const auto document = Tests::open(Pages{{"/Contents 3 0 R"}, {{3, stream(content)}}});
        ASSERT_TRUE(Host::place(document, foreign, {.layer = Layer::Above}));
        EXPECT_EQ(drawn(document), expected);
    }
    // Joined, and no token over the joint.
    const auto joined = Tests::open(
        Pages{{"/Contents [ 3 0 R 4 0 R ]"}, {{3, stream("q Q 1")}, {4, stream("0 0 m")}}});
    const auto document = Tests::open(Pages{{""}});
    ASSERT_TRUE(Host::place(document, joined));
    const auto joint = Host::decoded(document, streamOf(document, PDF::objectsOf(document).size() - 3));
    EXPECT_EQ(std::string(joint->begin(), joint->end()), "q Q 1\n0 0 m\n");
}

TEST(Place, aTaggedDocumentTakesItAsAnArtifact)
{
    const auto document = Tests::open(Pages{{""}, {}, "/MediaBox [ 0 0 100 200 ]", "/MarkInfo << /Marked true >>"});
    ASSERT_TRUE(Host::place(document, Tests::open(letterhead)));
    EXPECT_EQ(drawn(document), "/Artifact BMC q /Fx1 Do Q EMC|");
}

TEST(Place, hiddenContentStaysHidden)
{
    const auto foreign = [](const std::string& configuration) {
        return Tests::open(Pages{{"/Resources << /Properties << /A 3 0 R /B 4 0 R >> >>"},
            {{3, "<< /Type /OCG /Name (seen) >>"}, {4, "<< /Type /OCG /Name (hidden) >>"}}, "/MediaBox [ 0 0 9 9 ]",
            "/OCProperties << /OCGs [ 3 0 R 4 0 R ] /D << " + configuration + " >> >>"});
    };
    const std::string mine = "/OCProperties << /D << /BaseState /OFF /ON [ 3 0 R ] >> /OCGs [ 3 0 R ] >>";
    for (const char* configuration : {"/OFF [ 4 0 R ]", "/BaseState /OFF /ON [ 3 0 R ]"}) {
        auto document = Tests::open(Pages{{""}});
        ASSERT_TRUE(Host::place(document, foreign(configuration)));
        EXPECT_EQ(objectText(document, 1), "<< /OCProperties << /D << /OFF [ 12 0 R ] /Order [ 11 0 R 12 0 R ] >> "
            "/OCGs [ 11 0 R 12 0 R ] >> /Pages 2 0 R /Type /Catalog >>");
        document = Tests::open(Pages{{""}, {{3, "<< /Type /OCG >>"}}, "/MediaBox [ 0 0 9 9 ]", mine});
        ASSERT_TRUE(Host::place(document, foreign(configuration)));
        EXPECT_EQ(objectText(document, 1), "<< /OCProperties << /D << /BaseState /OFF /ON [ 3 0 R 11 0 R ] "
            "/Order [ 11 0 R 12 0 R ] >> /OCGs [ 3 0 R 11 0 R 12 0 R ] >> /Pages 2 0 R /Type /Catalog >>");
    }
}

TEST(Place, linksAndFieldsComeAlong)
{
    const auto foreign = Tests::open(Pages{{"/Annots [ 3 0 R << /Subtype /Link /Rect [ 0 0 10 20 ] /P 10 0 R >> 5 0 R "
        "9 0 R null ]"},
        {{3, "<< /Subtype /Widget /Rect [ 10 20 30 60 ] /Parent 4 0 R /AP << /N 6 0 R >> /StructParent 3 >>"},
            {4, "<< /T (name) /FT /Tx /Kids [ 3 0 R ] /V (x) >>"},
            {5, "<< /Subtype /Widget /T (other) /FT /Btn /AP << /N << /On 6 0 R >> >> /Rect [ 0 0 1 1 ] >>"},
            {6, stream("ap", "/BBox [ 0 0 1 1 ]")}, {7, "<< /Fields [ 4 0 R 5 0 R 9 0 R ] /DA (/F 0 Tf) /DR 8 0 R >>"},
            {8, "<< /Font << /F 6 0 R /G 6 0 R >> >>"}, {9, "<< /Subtype /Widget /FT /Sig /T (sig) >>"}},
        "/MediaBox [ 0 0 100 200 ]", "/AcroForm 7 0 R"});
    const auto document = Tests::open(Pages{{"/Rotate 90", "/MediaBox [ 0 0 50 100 ] /Annots 5 0 R"},
        {{3, "<< /T (name) /FT /Tx >>"}, {4, "<< /Fields [ 3 0 R ] /DR << /Font << /F 3 0 R >> >> >>"},
            {5, "[ 3 0 R ]"}},
        "/MediaBox [ 0 0 200 100 ]", "/AcroForm 4 0 R"});
    const auto placed = Host::place(document, foreign, {.hasAnnotations = true});
    ASSERT_TRUE(placed) << placed.refusal().message;
    ASSERT_EQ(placed->warnings.size(), 1u);
    EXPECT_EQ(placed->warnings[0], "signatures of the other document stay behind");
    const auto all = written(document);
    const auto has = [&all](const std::string& part) { return all.find(part) != all.npos; };
    for (const char* part : {"/Annots [ 13 0 R 14 0 R 15 0 R ]", "/Annots [ 3 0 R ",
             "/Fields [ 3 0 R 18 0 R 15 0 R 22 0 R 21 0 R ]", "/F 3 0 R /G ", "/T (name+1) ", "/T (name+2) ", "/T (other) ",
             "/T (other+1) ", "/Kids [ 13 0 R ]", "/Matrix [ 0 1 -1 0 0 0 ]", "/DA (/F 0 Tf) ",
             "/P 10 0 R /Parent 18 0 R /Rect [ 140 10 180 30 ] /Subtype /Widget", "/P 11 0 R /Parent 22 0 R /Rect [ 5 10 15 30 ] /Subtype /Widget"})
        EXPECT_TRUE(has(part)) << part;
    EXPECT_FALSE(has("StructParent"));
    EXPECT_FALSE(has("/Sig"));
}

TEST(Place, aRefusalChangesNothing)
{
    struct Case {
        const char* rule;
        Pages own;
        Pages foreign;
        Placement placement;
        std::string words;
    };
    const Case cases[] = {
        {"no such page", {{""}}, {{""}}, {.pages = "2"}, "there is no page \"2\" among 1"},
        {"no such foreign page", {{""}}, {{""}}, {.from = "2"}, "the other document: there is no page \"2\" among 1"},
        {"no area", {{"/MediaBox [ 1 1 1 1 ]"}}, {{""}}, {}, "page 1: has no area (MediaBox)"},
        {"no foreign area", {{""}}, {{"/MediaBox [ 1 1 1 1 ]"}}, {},
            "page 1 of the other document: has no area (MediaBox)"},
        {"no foreign pages", {{""}}, {}, {}, "the other document has no pages to be drawn"},
        {"half a turn of a turn", {{""}}, {{""}}, {.rotation = 45},
            "a page can't be turned by 45 degrees, which are no multiple of 90"},
        {"content of an unknown filter", {{""}}, {{"/Contents 3 0 R"}, {{3, stream("x", "/Filter /Odd")}}}, {},
            "page 1 of the other document: the filter Odd of its data is not supported"},
        {"data that isn't there", {{""}},
            {{"/Resources << /Font << /F 3 0 R >> >>"}, {{3, "<< /Length 99999 >>\nstream\nx\nendstream"}}}, {},
            "page 1 of the other document: its resources: the Length of a stream is missing, invalid or leads out of"
            " the file"},
        {"own content that can't be had", {{"/Contents 3 0 R"}, {{3, stream("x", "/Filter /Odd")}}}, {{""}},
            {.layer = Layer::Above}, "page 1: the filter Odd of its data is not supported"},
    };
    for (const Case& each : cases) {
        const auto document = Tests::open(each.own);
        const std::string before = written(document);
        EXPECT_EQ(refused(Host::place(document, Tests::open(each.foreign), each.placement)), each.words) << each.rule;
        EXPECT_FALSE(document->changed()) << each.rule;
        EXPECT_EQ(written(document), before) << each.rule;
    }
}

TEST(Place, boxesKeepTheirNumbers)
{
    const auto document = Tests::open(Pages{{""}});
    ASSERT_TRUE(Host::place(document, Tests::open(Pages{{"/MediaBox [ -0.5 1.05 10.25 -.075 ]"}})));
    const auto form = streamOf(document, PDF::objectsOf(document).size() - 3)->dict()->find(text("BBox"));
    const auto exact = PDF::exactText(document, form);
    EXPECT_EQ(std::string(exact->data(), exact->data() + exact->size()), "[ -0.5 -0.075 10.25 1.05 ]");
}

// Small files that ask for copies without end.
TEST(Place, whatIsSharedOverAndOverComesToAnEnd)
{
    const auto many = [](const std::string& text, int count) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all += text;
        return all;
    };
    Pages joined{{"/Contents [ " + many("3 0 R ", 1000) + "]"}, {{3, stream(compressed(std::string(10000000, ' ')), flate)}}};
    Pages overlapping{{"/Resources << /Font 3 0 R >>"}, {}};
    std::string fonts;
    for (unsigned id = 20; id < 120; ++id) {
        fonts += "/F" + std::to_string(id) + " " + std::to_string(id) + " 0 R ";
        overlapping.objects.emplace_back(id, "<< /Length 20000 >>\nstream\nx\nendstream");
    }
    overlapping.objects.emplace_back(3, "<< " + fonts + " >>");
    overlapping.objects.emplace_back(120, "(" + std::string(20000, 'x') + ")");
    Pages annotated{std::vector<std::string>(1000, "/Annots 3 0 R"), {{3, "[ " + many("<< >> ", 1000) + "]"}}};
    const std::pair<const Pages*, const char*> cases[] = {
        {&joined, "page 1 of the other document: it takes "},
        {&overlapping, "page 1 of the other document: its resources: a position is outside the data"},
        {&annotated, "the annotations of the other document are too many"},
    };
    const Pages own{std::vector<std::string>(1000, "")};
    for (const auto& [foreign, words] : cases) {
        const auto document = Tests::open(own);
        const std::string message = refused(Host::place(
            document, Tests::open(*foreign), {.pairing = Host::Pairing::PagePairs, .hasAnnotations = true}));
        EXPECT_TRUE(message.starts_with(words)) << message;
        EXPECT_FALSE(document->changed());
    }
}

// Every read of the foreign file fails once, from the first that the call does.
TEST(Place, failingReadsLeaveTheDocumentAsItWas)
{
    const auto failures = failOneByOne(&Fault::read, 0, [](const Fault& fault) {
        const auto stripe = make<TestStripe>(letterhead, fault);
        stripe->isSound = true;
        const auto foreign = PDF::Document::create(stripe);
        stripe->isSound = false;
        const auto document = Tests::open(Pages{{""}});
        const bool isPlaced = bool(Host::place(document, foreign));
        EXPECT_EQ(isPlaced, !stripe->hasFailed);
        EXPECT_EQ(document->changed(), isPlaced);
        return stripe->hasFailed;
    });
    EXPECT_GT(failures, 0u);
}

TEST(Place, pagesOfTheDocumentItselfCanBePlaced)
{
    const auto document = Tests::open(Pages{{"/Contents 3 0 R /Resources << /XObject << /A 4 0 R >> >>", ""},
        {{3, stream("own")}, {4, "(x)"}}});
    ASSERT_TRUE(Host::place(document, document, {.pages = "1-2", .from = "1"}));
    EXPECT_EQ(drawn(document, 0), "q /Fx1 Do Q|own|");
    EXPECT_EQ(drawn(document, 1), "q /Fx1 Do Q|");
}
