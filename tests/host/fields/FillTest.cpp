#include <tests/support/FormText.h>
#include <tests/support/Pages.h>
#include <tests/support/TestFolder.h>

#include <host/fields/Fill.h>
#include <host/fields/FormFields.h>
#include <host/saving/Save.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

using List = std::vector<std::string>;

// The written texts of all objects from number 3 on.
List written(const Ref<PDF::Document>& document)
{
    List texts;
    for (const auto& object : PDF::objectsOf(document))
        if (object->id() >= 3)
            texts.push_back(valueText(document, object->value()));
    return texts;
}

// A form with the objects in `kids` below object 3.
Ref<PDF::Document> formWith(const std::string& field, std::vector<std::string> kids = {})
{
    kids.insert(kids.begin(), field);
    return Tests::open(formFile("/Fields [ 3 0 R ]", kids));
}

} // namespace

TEST(Fill, aFieldTakesWhatItsKindTakes)
{
    const std::string limited = "<< /FT /Tx /MaxLen 2 /T (a) /V (old) >>";
    const std::string looks = "<< /AP << /N << /Off 9 0 R /Yes 9 0 R >> >> /AS ";
    const std::string options = "/Opt [ (x) [ (e) (shown) ] (x2) ] /T (a) ";
    const std::string choice = "/FT /Ch " + options;
    const std::string check = looks + "/Off /FT /Btn /T (a) >>";
    const std::string several = "<< " + choice + "/Ff 2097152 /V (old) >>";
    // The field, the value, and what the field consists of then, or the beginning of the refusal.
    const std::tuple<std::string, FieldValue, std::string> cases[] = {
        {"<< /FT /Tx /T (a) >>", "t(", "<< /FT /Tx /T (a) /V (t\\() >>"},
        {"<< /FT /Tx /T (a) /V 9 0 R /RV (rich) >>", "", "<< /FT /Tx /T (a) /V () >>"},
        {"<< /FT /Tx /T (a) /Ff 1 >>", "\\", "<< /FT /Tx /Ff 1 /T (a) /V <FEFF005C> >>"},
        {limited, "\xC3\xA4\xC3\xA4", "<< /FT /Tx /MaxLen 2 /T (a) /V <FEFF00E400E4> >>"},
        {limited, "abc", "the text is too long: it has 3 characters, and the field takes 2"},
        {limited, "a\xF0\x9F\x98\x80", "the text is too long: it has 3"},
        {"<< /FT /Tx /MaxLen -1 /T (a) >>", "", "the text is too long"},
        {limited, "\xC3", "the value is not UTF-8"},
        {limited, true, "a field of the kind text doesn't take"},
        {check, true, looks + "/Yes /FT /Btn /T (a) /V /Yes >>"},
        {check, "on", looks + "/Yes /FT /Btn /T (a) /V /Yes >>"},
        {check, "off", looks + "/Off /FT /Btn /T (a) /V /Off >>"},
        {check, "yes", "the field has no state \"yes\", but \"off\", \"Yes\""},
        {check, List{"Yes"}, "a field of the kind check box doesn't take a list"},
        {"<< /AP << /N << /on 9 0 R /x#20y 9 0 R >> >> /FT /Btn /T (a) >>", "x y",
            "<< /AP << /N << /on 9 0 R /x#20y 9 0 R >> >> /AS /x#20y /FT /Btn /T (a) /V /x#20y >>"},
        {"<< /AP << /N << /on 9 0 R /x 9 0 R >> >> /FT /Btn /T (a) >>", "on",
            "<< /AP << /N << /on 9 0 R /x 9 0 R >> >> /AS /on /FT /Btn /T (a) /V /on >>"},
        {"<< /AP << /N << /on 9 0 R /x 9 0 R >> >> /FT /Btn /T (a) >>", true, "\"on\" needs a field with one state"},
        {"<< " + choice + ">>", "shown", "<< " + choice + "/V (e) >>"},
        {"<< " + choice + "/I [ 0 ] /TI 0 >>", List{"e"}, "<< /FT /Ch /I [ 1 ] " + options + "/TI 1 /V (e) >>"},
        {"<< " + choice + "/I [ 0 ] /V (x) >>", "", "<< " + choice + ">>"},
        {"<< " + choice + "/Ff 262144 >>", "z", "the field has no choice \"z\""}, // Edit is for combo boxes
        {"<< " + choice + ">>", List{"x", "e"}, "the field takes only one choice"},
        {"<< " + choice + ">>", true, "a field of the kind list box doesn't take on or off"},
        {several, List{"x2", "e", "x2"}, "<< /FT /Ch /Ff 2097152 /I [ 1 2 ] " + options + "/V [ (e) (x2) ] >>"},
        {several, List{}, "<< /FT /Ch /Ff 2097152 " + options + ">>"},
        {"<< " + choice + "/Ff 393216 /I [ 0 ] >>", "own", "<< /FT /Ch /Ff 393216 " + options + "/V (own) >>"},
        {"<< " + choice + "/Ff 393216 >>", "\xFF", "the value is not UTF-8"},
        {"<< " + choice + "/Ff 2490368 >>", List{"own", "x"}, "the field takes only one choice"},
        {"<< /FT /Btn /Ff 65536 /T (a) >>", "on", "a field of the kind push button can't be filled"},
        {"<< /T (a) >>", "x", "a field of the kind unknown can't be filled"},
    };
    for (const auto& [field, value, after] : cases) {
        SCOPED_TRACE(field + " -> " + after);
        const auto document = formWith(field);
        const List before = written(document);
        const auto filled = fill(document, "a", value);
        const bool isRefusal = !after.starts_with("<<");
        EXPECT_EQ(bool(filled), !isRefusal);
        EXPECT_EQ(document->changed(), !isRefusal);
        EXPECT_EQ(written(document), isRefusal ? before : List{after});
        EXPECT_TRUE(filled || filled.refusal().message.starts_with(after)) << filled.refusal().message;
    }
}

TEST(Fill, whatStandsBesideTheFieldIsKeptInStep)
{
    const auto widget = [](const std::string& state, const std::string& shown = "x") {
        return "<< /AP << /N << /" + state + " 9 0 R >> >> /AS /" + shown + " >>";
    };
    // The field, its kids, the value, and what all of them consist of then.
    const std::tuple<const char*, std::string, List, FieldValue, List> cases[] = {
        {"the widget with the state is on, the others are off",
            "<< /FT /Btn /Ff 32768 /Kids [ 4 0 R 5 0 R ] /T (a) >>", {widget("r"), widget("g")}, "r",
            {"<< /FT /Btn /Ff 32768 /Kids [ 4 0 R 5 0 R ] /T (a) /V /r >>", widget("r", "r"), widget("g", "Off")}},
        {"an export value is that of the widget in its place",
            "<< /FT /Btn /Ff 32768 /Kids [ 4 0 R 5 0 R ] /Opt [ (red) (green) ] /T (a) >>",
            {widget("0"), widget("1")}, "green",
            {"<< /FT /Btn /Ff 32768 /Kids [ 4 0 R 5 0 R ] /Opt [ (red) (green) ] /T (a) /V /1 >>",
                widget("0", "Off"), widget("1", "1")}},
        {"a widget's own value follows", "<< /FT /Tx /Kids [ 4 0 R 5 0 R ] /T (a) >>", {"<< /V (old) >>", "<< >>"},
            "new", {"<< /FT /Tx /Kids [ 4 0 R 5 0 R ] /T (a) /V (new) >>", "<< /V (new) >>", "<< >>"}},
        {"a value above stays, and doesn't show through", "<< /FT /Ch /Kids [ 4 0 R ] /Opt [ (x) ] /T (b) /V (x) >>",
            {"<< /T (a) >>"}, List{},
            {"<< /FT /Ch /Kids [ 4 0 R ] /Opt [ (x) ] /T (b) /V (x) >>", "<< /T (a) /V [ ] >>"}},
    };
    for (const auto& [rule, field, kids, value, after] : cases) {
        SCOPED_TRACE(rule);
        const auto document = formWith(field, kids);
        const auto filled = fill(document, field.find("(b)") == field.npos ? "a" : "b.a", value);
        EXPECT_TRUE(filled) << filled.refusal().message;
        EXPECT_EQ(written(document), after);
    }
}

TEST(Fill, allFieldsOfAPathGetTheValueOrNone)
{
    const auto formOf = [](const std::string& second) {
        return Tests::open(formFile("/Fields [ 3 0 R 4 0 R ]", {"<< /FT /Tx /T (a) >>", second}));
    };
    const auto alike = formOf("<< /FT /Tx /T (a) /V (old) >>");
    EXPECT_TRUE(fill(alike, "a", "new"));
    EXPECT_EQ(written(alike), List(2, "<< /FT /Tx /T (a) /V (new) >>"));
    const auto unlike = formOf("<< /FT /Btn /T (a) >>");
    EXPECT_FALSE(fill(unlike, "a", "new"));
    EXPECT_FALSE(unlike->changed());
}

TEST(Fill, textsComeBackFromTheFile)
{
    const TestFolder folder;
    const auto opened = *Host::open(folder.put("in.pdf", formFile("/Fields [ 3 0 R ]", {"<< /FT /Tx /T (a) >>"})));
    FormFiller filler = std::move(*FormFiller::create(opened.document));
    std::string controls;
    for (char c = 1; c < 32; ++c)
        controls += c;
    for (const std::string& text : {std::string("plain ~"), controls, std::string("\0", 1), std::string("\x7F"),
             std::string(") \\ (("), std::string("a\\n\\"), std::string("\r\n\n\r"), std::string(),
             std::string("\xC3\xA9\xC3\xBF\xE2\x82\xAC"), std::string("\xD7\xA2\xE6\xBC\xA2\xF0\x9F\x91\x8D"),
             std::string("\xC3\xBE\xC3\xBF"), std::string("\xEF\xBB\xBFx"), std::string("\xEF\xBB\xBF")}) {
        EXPECT_FALSE(filler.fill("a", text));
        const auto saved = Host::save(opened, folder.path("out.pdf"));
        ASSERT_TRUE(saved) << saved.refusal().message;
        EXPECT_EQ(listFields(Host::open(folder.path("out.pdf"))->document)->fields[0].value, FieldTexts{text});
    }
}

TEST(Fill, viewersAreAskedToDrawWhereTheCallerSaysSo)
{
    const std::tuple<std::string, Appearances, const char*> cases[] = {
        {"", Appearances::DrawnByViewers, "<< /Fields [ 3 0 R ] /NeedAppearances true >>"},
        {"/NeedAppearances 4 0 R ", Appearances::DrawnByViewers, "<< /Fields [ 3 0 R ] /NeedAppearances true >>"},
        {"", Appearances::Drawn, "<< /Fields [ 3 0 R ] >>"},
        {"", Appearances::LeftAsTheyAre, "<< /Fields [ 3 0 R ] >>"},
    };
    for (const auto& [entry, appearances, after] : cases) {
        const auto document = Tests::open(formFile(entry + "/Fields [ 3 0 R ]", {"<< /FT /Tx /T (a) >>", "false"}));
        EXPECT_TRUE(fill(document, "a", "x", {appearances, {}, false, false}));
        const auto form = document->getCatalog()->valueAsDictionary()->find(Tests::text("AcroForm"));
        EXPECT_EQ(valueText(document, form), after);
    }
}

TEST(Fill, saysWhatPeopleShouldKnowBeforeTheFormGoesOut)
{
    const auto warnings = [](const std::string& catalog, const std::string& form, const List& fields) {
        PdfText file;
        file.object(1, "<< /Type /Catalog " + catalog + " /AcroForm << /Fields [ 3 0 R 4 0 R ] " + form + " >> >>");
        file.object(3, fields[0]).object(4, fields[1]);
        const auto document = Tests::open(file);
        auto filler = FormFiller::create(document);
        for (const char* name : {"a", "b", "a"})
            filler->fill(name, "x");
        return filler->warnings();
    };
    const std::string a = "<< /FT /Tx /T (a) ", b = "<< /FT /Tx /T (b) ", script = "<< /S /JavaScript /JS () >>";
    const std::string signature = "<< /FT /Sig /T (s) /V << >> >>";
    const std::tuple<const char*, const char*, List, List> cases[] = {
        {"", "/CO [ ] /XFA null", {a + "/AA << /E " + script + " >> >>", b + ">>"}, {}},
        {"", "", {a + ">>", signature}, {"the document is signed, and the signature will no longer be valid"}},
        {"/Perms << /UR3 << >> >>", "", {a + ">>", b + ">>"},
            {"the document has usage rights (Perms), which will no longer hold"}},
        {"/Perms << /DocMDP << >> >>", "", {a + ">>", b + ">>"},
            {"the document is certified (DocMDP), and the certification will no longer be valid"}},
        {"", "/CO [ 9 0 R ]", {a + "/AA << /F " + script + " >> >>", b + "/AA << /K " + script + " >> >>"},
            {"the form calculates fields by scripts (CO), which don't run: they keep their values",
                "scripts that format, check or calculate values don't run for a, b"}},
    };
    for (const auto& [catalog, form, fields, lines] : cases)
        EXPECT_EQ(warnings(catalog, form, fields), lines) << catalog << form;
}

TEST(Fill, saysWhichRequiredFieldsAreLeftEmptyAndWhatIsNotShown)
{
    const auto document = Tests::open(formFile("/Fields [ 3 0 R 4 0 R 5 0 R 6 0 R 7 0 R ]",
        {"<< /FT /Tx /Ff 2 /T (a) /V () >>", "<< /FT /Tx /Ff 2 /T (b) /V (x) >>", "<< /FT /Btn /Ff 2 /T (c) /V /Off >>",
            "<< /FT /Tx /T (d) >>", "<< /FT /Ch /Ff 2 /T (e) /Opt [ (x) ] >>"}));
    auto filler = FormFiller::create(document);
    FillOptions options;
    filler->fill("d", "x", options);
    EXPECT_TRUE(filler->warnings().empty());
    options.areRequiredChecked = true;
    filler->fill("d", "x\ny", options);
    const std::string blanks = "d: takes one line, and the line breaks of its value are shown as blanks";
    EXPECT_EQ(filler->warnings(), (List{blanks, "required fields are empty: a, c, e"}));
    for (const auto& [name, value] : {std::pair("b", ""), std::pair("a", "x"), std::pair("e", "x")})
        EXPECT_FALSE(filler->fill(name, value, options));
    EXPECT_EQ(filler->warnings(), (List{blanks, "required fields are empty: b, c"}));
    EXPECT_FALSE(filler->fill("c", true, options) || filler->fill("b", "x", options));
    EXPECT_EQ(filler->warnings(), List{blanks});
}

TEST(Fill, aFormInXfaGoesUnlessItIsKept)
{
    for (const bool isKept : {false, true}) {
        const auto document = Tests::open(formFile("/Fields [ 3 0 R ] /XFA [ ]", {"<< /FT /Tx /T (a) >>"}));
        EXPECT_FALSE(fill(document, "a", true));
        FillOptions options;
        options.isXfaKept = isKept;
        const auto filled = fill(document, "a", "x", options);
        EXPECT_EQ(*filled, List{isKept ? "the document also has an XFA form, which keeps the old values"
                                       : "the document's XFA form is taken out, since it would show the old values"});
        const auto form = document->getCatalog()->valueAsDictionary()->find(Tests::text("AcroForm"));
        EXPECT_EQ(valueText(document, form), isKept ? "<< /Fields [ 3 0 R ] /XFA [ ] >>" : "<< /Fields [ 3 0 R ] >>");
    }
}

TEST(Fill, refusesWhatIsNoFieldOrHasNoForm)
{
    const auto document = formWith("<< /FT /Tx /T (a) >>");
    EXPECT_EQ(fill(document, "a.b", "x").refusal().message, "there is no such field");
    EXPECT_FALSE(document->changed());
    EXPECT_FALSE(fill(Tests::open(PdfText().pages()), "a", "x"));
    EXPECT_FALSE(fill(nullptr, "a", "x"));
}
