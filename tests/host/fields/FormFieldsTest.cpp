#include <tests/support/FormText.h>
#include <tests/support/KeysAlone.h>

#include <host/fields/FormFields.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

FormFields fieldsOf(const std::string& entries, const std::vector<std::string>& objects)
{
    auto fields = listFields(Tests::open(formFile(entries, objects)));
    return fields ? *fields : FormFields{{}, {"refused: " + fields.refusal().message}};
}

// The value as a text: "-" for none, several with "+" between them.
std::string shown(const std::optional<FieldTexts>& value)
{
    std::string out;
    for (const std::string& text : value.value_or(FieldTexts{"-"}))
        out += (out.empty() ? "" : "+") + text;
    return out;
}

// "path=value " for each field.
std::string shown(const FormFields& form)
{
    std::string out;
    for (const FormField& field : form.fields)
        out += field.path + "=" + shown(field.value) + " ";
    return out;
}

// The only field of a form that consists of this dictionary, object 3, and what it refers to.
FormField onlyField(const std::string& dictionary, const std::vector<std::string>& others = {})
{
    std::vector<std::string> objects = {dictionary};
    objects.insert(objects.end(), others.begin(), others.end());
    const FormFields form = fieldsOf("/Fields [ 3 0 R ]", objects);
    EXPECT_EQ(form.fields.size(), 1u) << dictionary;
    return form.fields.empty() ? FormField() : form.fields[0];
}

} // namespace

TEST(FormFields, aPathIsMadeOfTheNamesFromTheTop)
{
    const std::tuple<const char*, std::vector<std::string>, const char*> cases[] = {
        {"kids without a name are widgets",
            {"<< /FT /Tx /T (a) /V (v) /Kids [ 4 0 R 5 0 R ] >>", "<< /Rect 0 >>", "<< /T () >>"}, "a=v "},
        {"a field below nameless kids belongs to the named one above",
            {"<< /FT /Tx /T (a) /V (v) /Kids [ 4 0 R ] >>", "<< /Kids [ 5 0 R ] >>", "<< /T (b) /V (w) >>"}, "a.b=w "},
        {"widgets beside named kids are a field of their own",
            {"<< /FT /Tx /T (a) /V (v) /Kids [ 4 0 R 5 0 R ] >>", "<< /T (b) /V (w) >>", "<< >>"}, "a.b=w a=v "},
        {"a name in UTF-16, in which a point stays", {"<< /FT /Tx /T <FEFF00E4002E263A> /V (v) >>"},
            "\xC3\xA4.\xE2\x98\xBA=v "},
        {"a name with raw bytes from 128 to 159, and a doubled backslash",
            {"<< /FT /Tx /T (\xFE\xFF\x8D" "D) /V (a\\\\b) >>"}, "\xE8\xB5\x84=a\\b "},
        {"no name at the top, or an empty one: the place", {"<< /FT /Tx /T () /V (v) >>"}, "0=v "},
        {"indirect name, kids and value",
            {"<< /FT /Tx /T 4 0 R /V 5 0 R /Kids 6 0 R >>", "(n)", "(v)", "[ 7 0 R ]", "<< /T 4 0 R >>"}, "n.n=v "},
        {"an indirect null is no name", {"<< /FT /Tx /T (a) /V (v) /Kids [ 4 0 R ] >>", "<< /T null >>"}, "a=v "},
        {"a kid's value where the field has none",
            {"<< /FT /Tx /T (a) /Kids [ 4 0 R ] >>", "<< /V (kid) >>"}, "a=kid "},
        {"the nearest value above",
            {"<< /FT /Tx /T (a) /V (far) /Kids [ 4 0 R ] >>", "<< /T (b) /V (near) /Kids [ 5 0 R ] >>",
                "<< /T (c) >>"},
            "a.b.c=near "},
    };
    for (const auto& [rule, objects, fields] : cases) {
        SCOPED_TRACE(rule);
        const FormFields form = fieldsOf("/Fields [ 3 0 R ]", objects);
        EXPECT_EQ(shown(form), fields);
        EXPECT_TRUE(form.skipped.empty());
    }
}

TEST(FormFields, fieldsOfOnePathAndKindAreOne)
{
    const FormFields form = fieldsOf("/Fields 7 0 R",
        {"<< /FT /Tx /T (a) /V (v) >>", "<< /FT /Tx /T (b) >>", "<< /FT /Btn /T (a) /V /On >>",
            "<< /FT /Tx /T (a) /V (v) /MaxLen 3 >>", "[ 3 0 R 4 0 R 5 0 R 6 0 R ]"});
    EXPECT_EQ(shown(form), "a=v b=- a=On ");
    EXPECT_EQ(form.fields[0].widgets.size(), 2u);
    EXPECT_EQ(form.fields[0].maxLength, 3);
}

TEST(FormFields, aBrokenPartLeavesTheRest)
{
    const std::string good = "<< /FT /Tx /T (good) >>";
    // The list of fields, objects, fields that are there, and what is told.
    const std::tuple<std::string, std::vector<std::string>, const char*, const char*> cases[] = {
        {"[ 99 0 R 3 0 R ]", {good}, "good=- ", "element 0 of Fields of the form doesn't lead to a dictionary"},
        {"[ 4 0 R 3 0 R ]", {good, "5 0 R", "<< >>"}, "good=- ",
            "element 0 of Fields of the form doesn't lead to a dictionary"},
        {"[ 3 0 R 3 0 R ]", {good}, "good=- ", "element 1 of Fields of the form was listed before"},
        {"[ 4 0 R 3 0 R ]", {good, "<< /T (a) /Kids [ 5 0 R ] >>", "<< /T (b) /Kids [ 4 0 R ] >>"}, "a.b=- good=- ",
            "element 0 of Kids of a.b was listed before"},
        {"[ 4 0 R 3 0 R ]", {good, "<< /T (" + std::string(5000, 'x') + ") >>"}, "good=- ",
            "element 0 of Fields of the form has a name that is too long"},
        {"[ << /T (direct) >> 3 0 R ]", {good}, "direct=- good=- ", ""},
        {"[ 4 0 R 3 0 R ]",
            {good, "<< /FT (Tx) /T (a) /Ff /x /V 3 /DV [ 1 ] /MaxLen (1) /Opt 5 /DA /x /Q (1) /Kids 7 >>"},
            "a=- good=- ", ""},
        {"3 0 R", {good}, "", ""},
    };
    for (const auto& [list, objects, fields, skipped] : cases) {
        SCOPED_TRACE(list + objects.back().substr(0, 80));
        const FormFields form = fieldsOf("/Fields " + list, objects);
        EXPECT_EQ(shown(form), fields);
        EXPECT_EQ(form.skipped, Lines(*skipped ? 1 : 0, skipped));
    }
    std::vector<std::string> chain;
    for (int i = 0; i < 600; ++i)
        chain.push_back("<< /T (n) /Kids [ " + std::to_string(4 + i) + " 0 R ] >>");
    EXPECT_EQ(fieldsOf("/Fields [ 3 0 R ]", chain).skipped.size(), 1u);
    std::string nulls;
    for (int i = 0; i < 1000; ++i)
        nulls += "null ";
    EXPECT_EQ(fieldsOf("/Fields [ " + nulls + "]", {}).skipped.size(), 100u);
}

TEST(FormFields, refusesWhatItCanNotReadTheFormOf)
{
    const auto withForm = [](const std::string& value) {
        const std::string catalog = "<< /Type /Catalog /AcroForm " + value + " >>";
        return listFields(Tests::open(PdfText().object(1, catalog).object(2, "<< /Fields [ ] >>").object(3, "2 0 R")));
    };
    for (const char* form : {"2 0 R", "<< >>", "null", "9 0 R"})
        EXPECT_TRUE(withForm(form)) << form;
    for (const char* form : {"17", "3 0 R", "[ 2 0 R ]"})
        EXPECT_EQ(withForm(form).refusal().code, ErrBadCast) << form;
    EXPECT_TRUE(listFields(Tests::open(PdfText().pages()))->fields.empty());
    EXPECT_EQ(listFields(nullptr).refusal().code, ErrNullArgument);
    EXPECT_EQ(listFields(Tests::open(PdfText().object(1, "<< >>"))).refusal().code, ErrBadCatalog);
    const PdfText encrypted = PdfText().pages().trailer("/Encr#79pt 3 0 R");
    EXPECT_EQ(listFields(Tests::open(encrypted)).refusal().reason, Reason::Encrypted);
    EXPECT_TRUE(listFields(Tests::open(PdfText().pages().trailer("/Encrypt null"))));
}

TEST(FormFields, textsAreDecodedAsTheyAreMeant)
{
    const std::tuple<std::string, std::string> cases[] = {
        {"<48C3A4>", "H\xC3\x83\xC2\xA4"},                     // no mark: not UTF-8
        {"<EFBBBFC3A4>", "\xC3\xA4"},                          // UTF-8 with its mark
        {"<EFBBBFC3>", "\xC3\xAF\xC2\xBB\xC2\xBF\xC3\x83"},    // which is none
        {"<FEFFD83DDE00>", "\xF0\x9F\x98\x80"},                // a pair
        {"<FEFFD83D>", "\xEF\xBF\xBD"},                        // half of one
        {"<FFFE4100E400>", "A\xC3\xA4"},                       // the other order
        {"(\\376\\377\\000A)", "A"},                           // UTF-16 in a literal
        {"<1880A09F41AD>", "\xCB\x98\xE2\x80\xA2\xE2\x82\xAC\xEF\xBF\xBD" "A\xEF\xBF\xBD"},
        {"(\\200\\240\\351)", "\xE2\x80\xA2\xE2\x82\xAC\xC3\xA9"}, // not Windows-1252
        {"/Ja#20#C3#A4", "Ja \xC3\xA4"},                       // a name is UTF-8
        {"/#E4#4", "\xC3\xA4#4"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(shown(onlyField("<< /FT /Tx /T (a) /V " + value + " >>").value), text) << value;
    const std::string stream = "<< /Length 4 >>\nstream\n\xFE\xFF\n\x41\nendstream";
    EXPECT_EQ(shown(onlyField("<< /FT /Tx /T (a) /V 4 0 R >>", {stream}).value), "\xE0\xA9\x81");
}

TEST(FormFields, kindAndFlagsGoTogether)
{
    const std::tuple<std::string, FieldKind, const char*> cases[] = {
        {"/FT /Tx /Ff 16781315", FieldKind::Text, "read-only required multiline comb "},
        {"/FT /Btn /Ff 4096", FieldKind::CheckBox, ""},
        {"/FT /Btn /Ff 33603584", FieldKind::RadioButtons, "no-toggle-to-off in-unison "},
        {"/FT /Btn /Ff 98304", FieldKind::PushButton, ""},
        {"/FT /Ch /Ff 2359296", FieldKind::ListBox, "multi-select "}, // Edit means nothing there
        {"/FT /Ch /Ff 393216", FieldKind::ComboBox, "editable "},
        {"/FT /Sig /V << >>", FieldKind::Signature, ""},
        {"/FT /Foo", FieldKind::Unknown, ""},
        {"/FT /Tx /Ff -1", FieldKind::Text,
            "read-only required no-export multiline password file-select do-not-scroll comb rich-text "
            "do-not-spell-check "},
    };
    for (const auto& [entries, kind, flags] : cases) {
        SCOPED_TRACE(entries);
        const FormField field = onlyField("<< /T (a) /Kids [ 4 0 R ] >>", {"<< " + entries + " >>"}); // at its widget
        std::string words;
        for (const std::string_view word : flagLabels(field.kind, field.flags))
            words.append(word) += " ";
        EXPECT_EQ(field.kind, kind);
        EXPECT_EQ(words, flags);
        EXPECT_EQ(field.isSigned, kind == FieldKind::Signature);
    }
}

TEST(FormFields, everythingElseOfAField)
{
    const FormFields form = fieldsOf("/DA (/F 1 Tf) /Q 2 /Fields [ 3 0 R 6 0 R ]",
        {"<< /FT /Ch /T (c) /TU (tip) /Opt [ (x) [ (e) 5 0 R ] 7 [ (only) ] ] /V [ (x) 5 0 R ] /DV (x) "
         "/Kids [ 4 0 R ] >>",
            "<< /T (d) /MaxLen 7.5 /Q 1 >>", "(shown)",
            "<< /FT /Btn /T (b) /V /1 /Opt [ (one) (two) ] /Kids [ 7 0 R 8 0 R ] >>",
            "<< /AP << /N << /Off 5 0 R /0 5 0 R >> >> >>", "<< /AP 9 0 R >>", "<< /N 10 0 R >>",
            "<< /1 5 0 R /0 5 0 R >>"});
    ASSERT_EQ(form.fields.size(), 2u);
    const FormField& choice = form.fields[0];
    ASSERT_EQ(choice.options.size(), 4u);
    EXPECT_EQ(choice.options[0].displayed, "x");
    EXPECT_EQ(choice.options[1].exported + choice.options[1].displayed, "eshown");
    EXPECT_EQ(choice.options[3].exported + choice.options[3].displayed, "only");
    EXPECT_EQ(shown(choice.value) + " " + shown(choice.defaultValue), "x+shown x");
    EXPECT_EQ(choice.maxLength, 7);
    EXPECT_EQ(choice.quadding, PDF::Field::Quadding::Centred);
    EXPECT_EQ(choice.defaultAppearance, "/F 1 Tf");
    const FormField& button = form.fields[1];
    EXPECT_EQ(button.states, (std::vector<std::string>{"0", "1"}));
    EXPECT_EQ(button.options[1].exported, "two");
    ASSERT_EQ(button.widgets.size(), 2u);
    EXPECT_EQ(button.widgets[0].states, (std::vector<std::string>{"0"}));
    EXPECT_EQ(button.widgets[1].states, (std::vector<std::string>{"0", "1"}));
    EXPECT_EQ(button.quadding, PDF::Field::Quadding::Right);
}

TEST(FormFields, aWidgetIsOnThePageThatListsItElseOnItsOwn)
{
    const std::string page = "<< /Type /Page /Parent 2 0 R /Annots ";
    const auto document = Tests::open(PdfText()
            .object(1, "<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [ 6 0 R ] >> >>")
            .object(2, "<< /Type /Pages /Count 3 /Kids [ 3 0 R 4 0 R 5 0 R ] >>")
            .object(3, page + "11 0 R >>").object(4, page + "[ 8 0 R 7 0 R ] >>").object(5, page + "11 0 R >>")
            .object(6, "<< /FT /Tx /T (a) /Kids [ 7 0 R 8 0 R 9 0 R 10 0 R ] >>")
            .object(7, "<< /P 5 0 R /Rect [ 30.25 40 10.123456 -20 ] >>").object(8, "<< /Rect [ 0 0 1 ] >>")
            .object(9, "<< /P 5 0 R >>").object(10, "<< /P 1 0 R >>").object(11, "[ 7 0 R null 5 ]"));
    const auto form = listFields(document);
    ASSERT_TRUE(form && form->fields.size() == 1);
    std::string shown;
    for (const auto& [number, object, rectangle, states] : form->fields[0].widgets)
        shown += std::to_string(number) + "/" + (object ? std::to_string(object->id()) : "-") + " ";
    EXPECT_EQ(shown, "1/3 2/4 3/5 0/- ");
    EXPECT_EQ(form->fields[0].widgets[0].rectangle, (Rectangle{10.123456, -20, 30.25, 40}));
    EXPECT_FALSE(form->fields[0].widgets[1].rectangle);
}

TEST(FormFields, anApplicationsOwnDictionaryMayHaveNoKeys)
{
    using Keys = std::vector<Ref<::String>>;
    const std::tuple<Ref<TVector<Ref<::String>>>, std::vector<std::string>> cases[] = {
        {nullptr, {}},
        {make<TVector<Ref<::String>>>(Keys{nullptr, ::String::create("On")}), {"On"}},
    };
    for (const auto& [keys, states] : cases) {
        const OneField one("<< /FT /Btn /T (b) /AP << >> >>");
        one.entries->findAsDictionary(::String::create("AP"), false)->set(::String::create("N"), make<KeysAlone>(keys));
        const auto form = listFields(one.document);
        ASSERT_EQ(form->fields.size(), 1u);
        EXPECT_EQ(form->fields[0].states, states);
    }
}
