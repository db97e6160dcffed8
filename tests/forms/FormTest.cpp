#include <tests/support/FormText.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Libraries::Files::PDF;

namespace {

const std::string whole = "<< /FT /Tx /T (first) >>"; // a field that is no fault

TEST(Form, ATreeIsBuiltUpToItsFirstFailureWhichEachLevelTells)
{
    const std::string two = "/Fields [ 3 0 R 4 0 R ]";
    const std::string kidFails = "Failed to initialize child field 0h (0) ( -> 4 (0))";
    // Rule, entries of the form, objects, fields that are there, and first line: a form without one is whole.
    const std::tuple<const char*, std::string, Lines, std::uint64_t, std::string> cases[] = {
        {"an empty array is a form without fields", "/Fields [ ]", {}, 0, ""},
        {"so is no array", "", {}, 0, ""},
        {"a direct dictionary is no field", "/Fields [ 3 0 R << /FT /Tx >> ]", {whole}, 1,
            "Child field is not an object reference: 1h (1)"},
        {"nor is a null", "/Fields [ null 3 0 R ]", {whole}, 0, "Child field is not an object reference: 0h (0)"},
        {"nor nothing", "/Fields [ 3 0 R 99 0 R ]", {whole}, 1, "Failed to resolve child 1h (1): 99 (0)"},
        {"a field is a dictionary", two, {whole, "[ ]"}, 1,
            "Resolved child 1h (1) ( -> 4 (0) ) is not an object: 8h (8)"},
        {"of a known kind", two, {whole, "<< /FT /Foo >>"}, 1,
            "Resolved child 1h (1) ( -> 4 (0) ) has unsupported field type: Foo"},
        {"or of none", two, {whole, "<< /FT (Foo) >>"}, 2, ""},
        {"a field is not its own kid", two, {whole, "<< /Kids [ 4 0 R ] >>"}, 1, kidFails},
        {"nor that of its kid", two, {whole, "<< /Kids [ 5 0 R ] >>", "<< /Kids [ 4 0 R ] >>"}, 1, kidFails},
        {"but several may have one", two, {"<< /Kids [ 5 0 R 5 0 R ] >>", "<< /Kids [ 5 0 R ] >>", whole}, 2, ""},
    };
    LogCapture log(formFilter);
    for (const auto& [rule, entries, objects, fieldCount, line] : cases) {
        SCOPED_TRACE(rule);
        log.take();
        const Ref<Document> document = open(formFile(entries, objects));
        Error::set(0);
        EXPECT_EQ(document->form()->fieldCount(), fieldCount);
        EXPECT_EQ(Error::get(), line.empty() ? 0u : 0x51Au);
        EXPECT_EQ(log.lines.empty() ? "" : log.lines.front(), line);
    }
    log.take();
    open(formFile("/Fields [ 3 0 R ]", {"<< /Kids [ 4 0 R ] >>", "<< /Kids [ 0 ] >>"}))->form();
    EXPECT_EQ(log.take(), (Lines{"Child field is not an object reference: 0h (0)",
                              "Failed to initialize child field 0h (0) ( -> 4 (0))",
                              "Failed to initialize child field 0h (0) ( -> 3 (0))",
                              "Failed to instantiate Form object"}));
}

TEST(Form, TheSearchIsMadeOnceAndItsCodeIsKept)
{
    const std::string noDictionary = "AcroForm value is not a Dictionary or Object Reference: ";
    const std::tuple<const char*, std::uint32_t, std::string> cases[] = {
        {"", ErrNoEntry, ""},
        {"/AcroForm 7", ErrBadCast, noDictionary + "3h (3)"},
        {"/AcroForm 3 0 R", ErrBadCast, noDictionary + "5h (5)"}, // a stream
        {"/AcroForm 4 0 R", 0x77, ""},
        {"/AcroForm << /Fields [ 0 ] >>", ErrFormCreate, "Failed to instantiate Form object"},
    };
    for (const auto& [entry, code, line] : cases) {
        SCOPED_TRACE(entry);
        const Ref<Document> document = open(PdfText().object(1, std::string("<< /Type /Catalog ") + entry + " >>")
                .stream(3, "").object(4, "<< /Fields [ ] >>"));
        Ref<Form> form;
        LogCapture log(formFilter);
        for (int round = 0; round < 2; ++round) {
            Error::set(0x77);
            const Ref<Form> earlier = std::exchange(form, document->form());
            EXPECT_EQ(Error::get(), code);
            EXPECT_EQ(bool(form), code == 0x77 || code == ErrFormCreate);
            EXPECT_TRUE(round == 0 || form == earlier);
            EXPECT_EQ(log.lines.empty() ? "" : log.take().back(), round == 0 ? line : "");
        }
    }
}

TEST(Form, WithoutCatalogEachCallSearchesAnew)
{
    const Ref<Document> document = open(damaged(formFile("/Fields [ 3 0 R ]", {whole}), "/Root 1 0 R", "/Root 9 0 R"));
    LogCapture log("PDF");
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(document->form());
        EXPECT_EQ(Error::get(), ErrNoRoot);
        EXPECT_EQ(log.take(), Lines(2, "Document has no root object")); // the catalog's line, and the form's
    }
    document->trailer()->set(text("Root"), make<ObjectRefObj>(1, 0));
    EXPECT_TRUE(document->form());
}

TEST(Form, ALogSinkFindsNoFormWhileItIsBeingBuilt)
{
    // The second has no catalog, the third no dictionary to build a form of.
    const std::string file = formFile("/Fields [ 3 0 R << >> ]", {whole});
    const std::tuple<std::string, std::uint32_t, std::uint64_t> cases[] = {
        {file, ErrFormCreate, 1},
        {damaged(file, "/Root 1 0 R", "/Root 9 0 R"), ErrNoRoot, 0},
        {PdfText().object(1, "<< /Type /Catalog /AcroForm 7 >>"), ErrBadCast, 0},
    };
    for (const auto& [bytes, code, fieldCount] : cases) {
        const Ref<Document> document = open(bytes);
        const LogCapture filters[] = {LogCapture("PDF"), LogCapture(formFilter)};
        int lines = 0;
        SysLogStream::setSink([&document, &lines](std::size_t, const Ref<::String>&) {
            ASSERT_LT(++lines, 10) << "each line leads to another one";
            EXPECT_FALSE(document->form());
            EXPECT_EQ(Error::get(), ErrNotAvailable);
        });
        const Ref<Form> form = document->form();
        EXPECT_EQ(Error::get(), code);
        EXPECT_GT(lines, 0);
        EXPECT_EQ(form ? form->fieldCount() : 0, fieldCount);
        SysLogStream::setSink([](std::size_t, const Ref<::String>&) {});
        EXPECT_TRUE(document->form() == form);
    }
}

TEST(Form, FieldsAreFoundByNameIndexAndPath)
{
    const Ref<Document> document = open(formFile("/Fields [ 3 0 R 4 0 R 5 0 R 6 0 R 7 0 R 8 0 R ]",
        {"<< /T (name) /TU (0) /Kids [ 9 0 R 10 0 R ] >>", "<< /T (a.b) /TU (1) >>", "<< /T <FEFF00E9> /TU (2) >>",
            "<< /TU (3) >>", "<< /T 5 /TU (4) >>", "<< /T (name) /TU (5) >>", "<< /TU (0.0) >>",
            "<< /TU (0.1) /Kids [ 11 0 R ] >>", "<< /T (\\(x\\)) /TU (0.1.x) >>"}));
    const Ref<Form> form = document->form();
    const auto byName = &Form::fieldByName;
    const auto byPath = &Form::fieldByPath;
    // The search, what is sought, `TU` of the field found or none, and the code.
    const std::tuple<decltype(byName), Ref<::String>, std::string, std::uint32_t> cases[] = {
        {byName, text("name"), "0", 0},
        {byName, text("a.b"), "1", 0},
        {byName, text("\xE9"), "2", 0},
        {byName, text("3"), "3", 0},
        {byName, text("4"), "4", 0}, // a name that is no string is none
        {byName, text("0"), "", ErrNoEntry},
        {byName, text(""), "", ErrInvalidArgument},
        {byName, nullptr, "", ErrNullArgument},
        {byPath, text(".name..1.(x)"), "0.1.x", 0},
        {byPath, text("a.b"), "", ErrNoEntry},
        {byPath, text("name.2"), "", ErrNoEntry},
        {byPath, text("."), "", ErrInvalidArgument},
        {byPath, nullptr, "", ErrNullArgument},
    };
    for (const auto& [find, sought, found, code] : cases) {
        SCOPED_TRACE(plain(sought));
        const Ref<Field> field = ((*form).*find)(sought);
        EXPECT_EQ(codeOf(field), code);
        EXPECT_EQ(field ? shown(field->alternateName()) : "", found);
    }
}

TEST(Form, HoldsNeitherDocumentNorParents)
{
    Ref<Document> document = open(formFile("/Fields [ 3 0 R ]", {"<< /FT /Tx /Kids [ 4 0 R ] >>", "<< /T (kid) >>"}));
    Ref<Form> form = document->form();
    const WeakRef<Document> weak(document.get());
    const Ref<Field> kid = form->field(0)->child(0);
    EXPECT_TRUE(kid->parent() == form->field(0) && !form->field(0)->parent());
    document = nullptr;
    EXPECT_FALSE(weak.lock());
    form = nullptr;
    EXPECT_FALSE(kid->parent());
    EXPECT_EQ(shown(kid->name()), "kid");
}

// A form in which each field has the next object as its kid, once or twice.
std::string chain(std::size_t levels, bool isDoubled)
{
    Lines objects(levels, "<< /FT /Btn >>");
    for (std::size_t i = 0; i + 1 < levels; ++i) {
        const std::string kid = " " + std::to_string(4 + i) + " 0 R";
        objects[i] = "<< /FT /Btn /Kids [" + kid + (isDoubled ? kid : "") + " ] >>";
    }
    return formFile("/Fields [ 3 0 R ]", objects);
}

TEST(Form, HasALimitedNumberOfLevelsAndFields)
{
    // 13 levels of two kids each are 8,191 fields, 14 are 16,383; the limit is there at about 10,200.
    const std::tuple<std::size_t, bool, std::uint32_t> cases[]
        = {{500, false, 0}, {501, false, ErrFormCreate}, {13, true, 0}, {14, true, ErrFormCreate}};
    for (const auto& [levels, isDoubled, code] : cases) {
        Error::set(0);
        open(chain(levels, isDoubled))->form();
        EXPECT_EQ(Error::get(), code) << levels;
    }
}

} // namespace
