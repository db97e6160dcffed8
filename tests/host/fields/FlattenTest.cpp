#include <host/fields/Flatten.h>

#include <tests/support/Pages.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

using Paths = std::vector<std::string>;

const std::string box = "/BBox [ 0 0 10 10 ]";

// A form of one page, 4, whose fields are in 3. Objects from 10 on are looks.
struct FormOfOnePage {
    std::string fields = "[ 5 0 R ]";
    std::string annotations = "[ 5 0 R ]";
    std::vector<std::string> objects = {}; // from 5 on
    std::vector<std::string> looks = {box};
    std::string form = {};
    std::string page = {};
    std::string catalog = {};

    operator Ref<PDF::Document>() const
    {
        PdfText text;
        text.object(1, "<< /Type /Catalog /AcroForm 3 0 R /Pages 2 0 R " + catalog + " >>")
            .object(2, "<< /Type /Pages /Kids [ 4 0 R ] /Count 1 /MediaBox [ 0 0 100 200 ] >>")
            .object(3, "<< /Fields " + fields + " " + form + " >>")
            .object(4, "<< /Type /Page /Annots " + annotations + " " + page + " >>");
        for (std::size_t i = 0; i < objects.size(); ++i)
            text.object(unsigned(5 + i), objects[i]);
        for (std::size_t i = 0; i < looks.size(); ++i)
            text.stream(unsigned(10 + i), "look", looks[i]);
        return Tests::open(text);
    }
};

std::string widget(const std::string& entries)
{
    return "<< /Rect [ 10 20 30 60 ] /Subtype /Widget " + entries + " >>";
}

// What the first page draws: matrices and the ids of XObjects, or why nothing is flattened.
std::string flattened(const Ref<PDF::Document>& document, const FieldSelection& which = AllFields(),
    const FlattenOptions& options = {})
{
    const auto done = flatten(document, which, options);
    if (!done)
        return done.refusal().message;
    std::string all = pageEntry(document, 0, "Contents") == "none" ? "" : drawn(document);
    const auto resources = Host::pages(document)->pages[0].resources;
    const auto xObjects = resources ? PDF::resolveEntryAs<PDF::Dictionary>(*document, *resources, text("XObject"))
                                    : nullptr;
    const auto names = xObjects ? xObjects->keys() : nullptr;
    for (std::size_t i = 0; names && i < names->size(); ++i)
        all = damaged(all, "/" + plain(names->get(i)) + " Do",
            valueText(document, xObjects->find(names->get(i))) + " Do");
    return all;
}

// Everything, as it would be written.
std::string whole(const Ref<PDF::Document>& document)
{
    std::string all;
    for (const auto& object : PDF::objectsOf(document))
        all += valueText(document, object->value()) + "\n";
    return all;
}

} // namespace

TEST(Flatten, theBoxThroughTheMatrixFillsTheRectangle)
{
    struct Case {
        const char* rule;
        std::string look;
        std::string widget;
        std::string drawn; // empty for nothing
        std::string page = {};
    };
    const std::string rect = "/Rect [ 10 20 30 60 ]"; // 20 by 40
    const Case cases[] = {
        {"scaled", box, rect, "2 0 0 4 10 20"},
        {"from any corner", "/BBox [ 5 5 -5 -5 ]", "/Rect [ 30 60 10 20 ]", "2 0 0 4 20 40"},
        {"turned by its matrix", "/BBox [ 0 0 40 20 ] /Matrix [ 0 1 -1 0 0 0 ]", rect, "1 0 0 1 30 20"},
        {"sheared by it", "/BBox [ 0 0 1 1 ] /Matrix [ 1 0 1 2 3 0 ]", rect, "10 0 0 20 -20 20"},
        {"a matrix that is none", box + " /Matrix [ 1 0 0 1 ]", rect, "2 0 0 4 10 20"},
        {"made very small", "/BBox [ 0 0 30000000 4000000 ]", rect, "0.00000066666667 0 0 0.00001 10 20"},
        {"exact places", box, "/Rect [ 1.7499847 0 11.7499847 10 ]", "1 0 0 1 1.7499847 0"},
        {"upright on a page that is turned", box, "/F 16 " + rect, "0 -2 4 0 -30 60", "/Rotate 270"},
        {"upright on a page that is turned otherwise", box, "/F 16 " + rect, "0 2 -4 0 50 60", "/Rotate 90"},
        {"a box without area", "/BBox [ 0 0 10 0 ]", rect, ""},
        {"no box", "", rect, ""},
        {"a box of something else", "/BBox [ 0 0 (10) 10 ]", rect, ""},
        {"a box beyond all sheets", "/BBox [ 0 0 10000000000 10 ]", rect, ""},
        {"a matrix without area", box + " /Matrix [ 1 1 1 1 0 0 ]", rect, "1 0 0 2 10 20"},
        {"a matrix of zeros", box + " /Matrix [ 0 0 0 0 0 0 ]", rect, ""},
        {"a matrix that makes it tiny", box + " /Matrix [ .000000000001 0 0 .000000000001 0 0 ]", rect, ""},
        {"a rectangle without area", box, "/Rect [ 10 20 10 20 ]", ""},
        {"no rectangle", box, "", ""},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.rule);
        const Ref<PDF::Document> document = FormOfOnePage{.objects = {"<< /AP << /N 10 0 R >> /FT /Tx /T (a) "
                                                              + each.widget + " >>"},
            .looks = {each.look + " /Subtype /Form"}, .page = each.page};
        EXPECT_EQ(flattened(document), each.drawn.empty() ? "" : "q " + each.drawn + " cm 10 0 R Do Q|");
        EXPECT_EQ(objectText(document, 1), "<< /Pages 2 0 R /Type /Catalog >>");
        EXPECT_EQ(pageEntry(document, 0, "Annots"), "none");
    }
}

TEST(Flatten, whatAViewerShowsIsDrawn)
{
    const std::string states = "/AP << /N << /Off 11 0 R /Yes 10 0 R >> >> ";
    const std::string look = "/AP << /N 10 0 R >> ";
    const auto print = FlattenOptions{.medium = Medium::Print};
    const std::tuple<const char*, std::string, std::string, FlattenOptions> cases[] = {
        {"the state", "/FT /Btn /AS /Yes " + states, "10", {}},
        {"a state that isn't there", "/FT /Btn /AS /No " + states, "", {}},
        {"the value where there is no state", "/FT /Btn /V /Yes " + states, "10", {}},
        {"off without either", "/FT /Btn " + states, "11", {}},
        {"states of a text", "/FT /Tx /V (x) /AS /Yes " + states, "10", {}},
        {"a field of no kind", look, "10", {}},
        {"a push button", "/FT /Btn /Ff 65536 " + look, "10", {}},
        {"a push button without a look", "/FT /Btn /Ff 65536 /MK << /BG [ 1 ] >>", "", {}},
        {"a signature to come", "/FT /Sig", "", {}},
        {"no stream", "/FT /Btn /AP << /N 4 0 R >>", "", {}},
        {"hidden", "/F 2 /FT /Tx " + look, "", {}},
        {"for the printer alone", "/F 36 /FT /Tx " + look, "", {}},
        {"for the screen alone", "/FT /Tx " + look, "10", {}},
        {"not printed", "/FT /Tx " + look, "", print},
        {"printed", "/F 4 /FT /Tx " + look, "10", print},
        {"printed though not on the screen", "/F 36 /FT /Tx " + look, "10", print},
        {"neither", "/F 6 /FT /Tx " + look, "", print},
    };
    for (const auto& [rule, entries, shown, options] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document
            = FormOfOnePage{.objects = {widget("/T (a) " + entries)}, .looks = {box, box}};
        EXPECT_EQ(flattened(document, AllFields(), options),
            shown.empty() ? "" : "q 2 0 0 4 10 20 cm " + shown + " 0 R Do Q|");
        EXPECT_EQ(pageEntry(document, 0, "Annots"), "none");
    }
}

TEST(Flatten, whatHasNoLookIsDrawnFirst)
{
    // The entries of the field, those of the form, and a part of what is drawn then.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"a text", "/FT /Tx /V (text)", "", "(text) Tj"},
        {"a choice", "/FT /Ch /Ff 131072 /V (e) /Opt [ [ (e) (shown) ] ]", "", "(shown) Tj"},
        {"states of a text that isn't in one", "/FT /Tx /V (text) /AP << /N << /A 10 0 R >> >>", "", "(text) Tj"},
        {"a text that viewers draw", "/FT /Tx /V (new) /AP << /N 10 0 R >>", "/NeedAppearances true", "(new) Tj"},
        {"a text that is empty", "/FT /Tx", "", ""},
        {"an empty one with a frame", "/FT /Tx /MK << /BC [ 0 ] >>", "", " re\ns"},
        {"a check box", "/FT /Btn /V /On", "", "(4) Tj"},
        {"one that is off", "/FT /Btn /V /Off /MK << /CA (4) >>", "", ""},
        {"one that is off, with a frame", "/FT /Btn /MK << /BC [ 0 ] >>", "", " re\ns"},
        {"a radio button", "/FT /Btn /Ff 32768 /AS /1", "", "(l) Tj"},
    };
    for (const auto& [rule, entries, form, part] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document
            = FormOfOnePage{.objects = {widget("/T (a) " + entries)}, .form = form};
        const std::string drawn = flattened(document);
        EXPECT_EQ(drawn.substr(0, drawn.find(" cm")), part.empty() ? "" : "q 1 0 0 1 10 20");
        const bool isOfTheFile = drawn.find(" 10 0 R Do") != drawn.npos;
        EXPECT_FALSE(isOfTheFile);
        EXPECT_NE(whole(document).find(part), std::string::npos) << whole(document);
    }
}

TEST(Flatten, fieldsGoFromTheFormWithThoseAboveThatAreEmpty)
{
    const std::vector<std::string> objects = {
        "<< /T (a) /Kids [ 6 0 R 7 0 R ] >>",
        widget("/AP << /N 10 0 R >> /FT /Tx /T (b) /Parent 5 0 R"),
        "<< /Kids [ 8 0 R 9 0 R ] /FT /Tx /T (c) /Parent 5 0 R >>",
        widget("/AP << /N 10 0 R >> /Parent 7 0 R"),
        widget("/AP << /N 10 0 R >> /Parent 7 0 R"),
    };
    const std::string order = " /CO [ 6 0 R 7 0 R ] ";
    // The paths, and then form, field "a", and annotations.
    const std::tuple<Paths, std::string, std::string, std::string> cases[] = {
        {{"a.b"}, "<< /CO [ 7 0 R ] /Fields [ 5 0 R ] >>", "<< /Kids [ 7 0 R ] /T (a) >>", "[ 8 0 R 9 0 R ]"},
        {{"a.c", "a.c"}, "<< /CO [ 6 0 R ] /Fields [ 5 0 R ] >>", "<< /Kids [ 6 0 R ] /T (a) >>", "[ 6 0 R ]"},
        {{"a"}, "gone", "", "none"},
        {{"a.c", "a.b"}, "gone", "", "none"},
        {{"a.b", "a.x"}, "a.x: there is no such field", "", ""},
        {{"a."}, "a.: there is no such field", "", ""},
    };
    for (const auto& [paths, form, field, annotations] : cases) {
        SCOPED_TRACE(paths.back());
        const Ref<PDF::Document> document = FormOfOnePage{
            .annotations = "[ 6 0 R 8 0 R 9 0 R ]", .objects = objects, .form = order + "/XFA (old)"};
        const std::string before = whole(document);
        const auto done = flatten(document, paths);
        if (!done) {
            EXPECT_EQ(done.refusal().message, form);
            EXPECT_EQ(whole(document), before);
            EXPECT_FALSE(document->changed());
            continue;
        }
        const bool isGone = objectText(document, 1).find("AcroForm") == std::string::npos;
        EXPECT_EQ(isGone ? "gone" : objectText(document, 3), form);
        EXPECT_EQ(done->warnings.size(), isGone ? 0u : 1u) << "of the other form";
        EXPECT_EQ(pageEntry(document, 0, "Annots"), annotations);
        EXPECT_TRUE(field.empty() || objectText(document, 5) == field) << objectText(document, 5);
    }
}

TEST(Flatten, formsInCirclesEnd)
{
    const std::string look = "/AP << /N 10 0 R >> ";
    // Fields, objects, and what is left of field "a" when "a.b" goes.
    const std::tuple<const char*, std::vector<std::string>, std::string> cases[] = {
        {"listed twice", {"<< /T (a) /Kids [ 6 0 R 6 0 R ] >>", widget("/FT /Tx /T (b) " + look)}, "gone"},
        {"a kid that is the field above", {"<< /T (a) /Kids [ 6 0 R 5 0 R ] >>", widget("/FT /Tx /T (b) " + look)},
            "gone"},
        {"one that stays, and shares its kids",
            {"<< /T (a) /Kids [ 6 0 R 7 0 R ] >>", widget("/FT /Tx /T (b) " + look),
                "<< /T (c) /Kids [ 8 0 R 5 0 R ] >>", "<< /T (d) /FT /Tx >>"},
            "<< /Kids [ 7 0 R ] /T (a) >>"},
    };
    for (const auto& [rule, objects, left] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document
            = FormOfOnePage{.fields = "[ 5 0 R 5 0 R ]", .annotations = "[ 6 0 R 6 0 R ]", .objects = objects};
        EXPECT_EQ(flattened(document, Paths{"a.b"}), "q 2 0 0 4 10 20 cm 10 0 R Do Q|");
        const bool isGone = objectText(document, 1).find("AcroForm") == std::string::npos;
        EXPECT_EQ(isGone ? "gone" : objectText(document, 5), left);
    }
}

TEST(Flatten, pagesMayShareAnnotations)
{
    PdfText file;
    file.object(1, "<< /Type /Catalog /AcroForm << /Fields [ 8 0 R 9 0 R ] >> /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R 4 0 R 5 0 R 3 0 R ] /Count 4 >>")
        .object(3, "<< /Type /Page /Annots 6 0 R >>")
        .object(4, "<< /Type /Page /Annots 6 0 R >>")
        .object(5, "<< /Type /Page /Annots [ 8 0 R null ] >>")
        .object(6, "[ 7 0 R 8 0 R 99 0 R ]")
        .object(7, "<< /Subtype /Link >>")
        .object(8, widget("/AP << /N 10 0 R >> /FT /Tx /T (a)"))
        .object(9, widget("/AP << /N 10 0 R >> /FT /Tx /T (nowhere)"))
        .stream(10, "look", box);
    const auto document = Tests::open(file);
    const auto done = flatten(document, AllFields());
    ASSERT_TRUE(done) << done.refusal().message;
    EXPECT_EQ(done->fieldCount, 2u);
    EXPECT_EQ(done->widgetCount, 1u);
    EXPECT_EQ(done->drawnCount, 1u);
    EXPECT_EQ(done->pageCount, 3u);
    EXPECT_EQ(pageEntry(document, 0, "Annots"), pageEntry(document, 1, "Annots"));
    EXPECT_EQ(objectText(document, 11), "[ 7 0 R 99 0 R ]");
    EXPECT_EQ(pageEntry(document, 2, "Annots"), "[ null ]");
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(drawn(document, i), "q 2 0 0 4 10 20 cm /Fx1 Do Q|");
    EXPECT_NE(objectText(document, 10).find("/Subtype /Form"), std::string::npos) << "which Do needs";
}

TEST(Flatten, optionalContentStaysOptional)
{
    const Ref<PDF::Document> document = FormOfOnePage{
        .objects = {widget("/AP << /N 10 0 R >> /FT /Tx /T (a) /OC 6 0 R"), "<< /Type /OCG /Name (layer) >>"},
        .looks = {"/BBox [ 0 0 10 10 ] /Matrix [ 1 0 0 2 0 0 ]"}};
    EXPECT_EQ(flattened(document), "q 2 0 0 2 10 20 cm 11 0 R Do Q|");
    EXPECT_TRUE(objectText(document, 11).starts_with(
        "<< /BBox [ 0 0 10 20 ] /Length 7 /OC 6 0 R /Resources << /XObject << /Fx 10 0 R >> >> /Subtype /Form"))
        << objectText(document, 11);
}

TEST(Flatten, theDrawingTakesThePlaceInTheStructure)
{
    const std::string look = "/AP << /N 10 0 R >> /FT /Tx ";
    const auto formWith = [&](const std::string& root, const std::string& page) -> Ref<PDF::Document> {
        return FormOfOnePage{.fields = "[ 5 0 R 6 0 R ]",
            .annotations = "[ 5 0 R 6 0 R ]",
            .objects = {widget(look + "/T (a) /StructParent 1"), widget(look + "/T (b) /F 2 /StructParent 2"),
                "<< /S /Form /K [ << /Type /OBJR /Obj 5 0 R >> 0 ] >>",
                "<< /S /Form /K << /Type /OBJR /Obj 6 0 R >> >>",
                "<< /S /Document /K [ 7 0 R 8 0 R ] >>"},
            .page = page, .catalog = "/StructTreeRoot << /K 9 0 R " + root + " >>"};
    };
    const std::string parents = "/ParentTree << /Kids [ << /Nums [ 0 [ 7 0 R ] ] /Limits [ 0 0 ] >> "
                                "<< /Nums [ 1 7 0 R 2 8 0 R 4 9 0 R ] /Limits [ 1 4 ] >> ] >> ";
    const std::tuple<const char*, std::string, std::string, std::string, std::string, std::string> cases[] = {
        {"after the content that is there", parents, "/StructParents 0", "1", "0",
            "/ParentTree 12 0 R /ParentTreeNextKey none: << /Nums [ 0 11 0 R 4 9 0 R ] >> [ 7 0 R 7 0 R ]"},
        {"of a page without any", parents + "/ParentTreeNextKey 3", "", "0", "5",
            "/ParentTree 12 0 R /ParentTreeNextKey 6: << /Nums [ 0 [ 7 0 R ] 4 9 0 R 5 11 0 R ] >> [ 7 0 R ]"},
        {"without a tree", "", "/StructParents 7", "0", "7",
            "/ParentTree 12 0 R /ParentTreeNextKey none: << /Nums [ 7 11 0 R ] >> [ 7 0 R ]"},
    };
    for (const auto& [rule, root, page, number, key, tree] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document = formWith(root, page);
        EXPECT_EQ(flattened(document), "/Form <</MCID " + number + ">> BDC q 2 0 0 4 10 20 cm 10 0 R Do Q EMC|");
        EXPECT_EQ(objectText(document, 7), "<< /K [ << /MCID " + number + " /Pg 4 0 R /Type /MCR >> 0 ] /S /Form >>");
        EXPECT_EQ(objectText(document, 8), "<< /S /Form >>");
        EXPECT_EQ(pageEntry(document, 0, "StructParents"), key);
        const auto held = objectOf(document, 1)->valueAsDictionary()->findAsDictionary(text("StructTreeRoot"), true);
        const std::string parentsAfter = "/ParentTree " + valueText(document, held->find(text("ParentTree")))
            + " /ParentTreeNextKey " + valueText(document, held->find(text("ParentTreeNextKey"))) + ": "
            + objectText(document, 12) + " " + objectText(document, 11);
        EXPECT_EQ(parentsAfter, tree);
    }
    // A place that can't be given away: an element that no reference names.
    const Ref<PDF::Document> document = FormOfOnePage{.objects = {widget(look + "/T (a)")},
        .catalog = "/StructTreeRoot << /K << /S /Form /K << /Type /OBJR /Obj 5 0 R >> >> >>"};
    EXPECT_EQ(flattened(document), "/Artifact BMC q 2 0 0 4 10 20 cm 10 0 R Do Q EMC|");
    EXPECT_EQ(objectText(document, 1), "<< /Pages 2 0 R /StructTreeRoot << /K << /S /Form >> >> /Type /Catalog >>");
}

TEST(Flatten, aRefusalChangesNothing)
{
    const std::string other = widget("/FT /Tx /T (first) /V (drawn)");
    const std::tuple<const char*, FormOfOnePage> cases[] = {
        {"field: no font has the characters \"\u6771\" (U+6771)",
            {.fields = "[ 5 0 R 6 0 R ]", .annotations = "[ 5 0 R 6 0 R ]",
                .objects = {other, widget("/FT /Tx /T (field) /V <FEFF6771>")}}},
        {"page 1: ", {.objects = {other}, .looks = {"/Filter /JBIG2Decode"}, .page = "/Contents 10 0 R"}},
        {"the document is encrypted", {.objects = {other}, .catalog = ""}},
    };
    for (const auto& [message, form] : cases) {
        SCOPED_TRACE(message);
        const Ref<PDF::Document> document = form;
        if (std::string_view(message).find("encrypted") != std::string_view::npos)
            document->trailer()->set(text("Encrypt"), PDF::Dictionary::create());
        const std::string before = whole(document);
        EXPECT_TRUE(flattened(document).starts_with(message)) << flattened(document);
        EXPECT_EQ(whole(document), before);
    }
    EXPECT_EQ(flatten(nullptr, AllFields()).refusal().code, ErrNullArgument);
}

TEST(Flatten, longChoicesThatManyFieldsInheritAreLimited)
{
    constexpr unsigned count = 3000;
    PdfText file;
    std::string kids;
    for (unsigned i = 0; i < count; ++i) {
        kids += std::to_string(10 + i) + " 0 R ";
        file.object(10 + i, widget("/T (" + std::to_string(i) + ")"));
    }
    file.pages("3 0 R", "/Count 1").object(3, "<< /Type /Page /Annots [ " + kids + " ] >>");
    file.object(1, "<< /Type /Catalog /AcroForm << /Fields [ 4 0 R ] >> /Pages 2 0 R >>")
        .object(4, "<< /FT /Ch /Ff 131072 /T (a) /V (v) /Opt 5 0 R /Kids [ " + kids + " ] >>")
        .object(5, "[ (" + std::string(20000, 'x') + ") ]");
    const auto document = Tests::open(file);
    const auto done = flatten(document, AllFields());
    ASSERT_FALSE(done);
    EXPECT_EQ(done.refusal().reason, Reason::LimitReached);
    EXPECT_TRUE(done.refusal().message.starts_with("a.")) << done.refusal().message;
    EXPECT_FALSE(document->changed());
}

TEST(Flatten, widgetsThatManyPagesShareAreLimited)
{
    constexpr unsigned count = 600; // pages, and widgets on each
    PdfText file;
    std::string kids, fields;
    for (unsigned i = 0; i < count; ++i) {
        kids += std::to_string(10 + i) + " 0 R ";
        fields += std::to_string(10 + count + i) + " 0 R ";
        file.object(10 + i, "<< /Type /Page /Annots 3 0 R >>")
            .object(10 + count + i, widget("/AP << /N 4 0 R >> /FT /Tx /T (a)"));
    }
    file.pages(kids, "/Count 1").object(3, "[ " + fields + " ]").stream(4, "look", box);
    file.object(1, "<< /Type /Catalog /AcroForm << /Fields 3 0 R >> /Pages 2 0 R >>");
    const auto document = Tests::open(file);
    const auto done = flatten(document, AllFields());
    EXPECT_EQ(done ? Reason::Missing : done.refusal().reason, Reason::LimitReached);
    EXPECT_FALSE(document->changed());
}
