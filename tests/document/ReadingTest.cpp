#include <document/DocumentObj.h>
#include <document/Version.h>

#include <tests/support/Documents.h>

#include <gtest/gtest.h>

#include <array>

using namespace Tests;

namespace {

const std::string good = PdfText().pages("3 0 R").object(3, "<< /Type /Page /Parent 2 0 R >>");

// A file whose table, behind its keyword, is given as it stands.
std::string withTable(const std::string& table, const std::string& body = "%PDF-1.4\n1 0 obj\n(x)\nendobj\n")
{
    return body + "xref\n" + table + "trailer\n<< >>\nstartxref\n" + std::to_string(body.size()) + "\n%%EOF\n";
}

std::string repeated(const std::string& piece, int times)
{
    std::string result;
    for (; times > 0; --times)
        result += piece;
    return result;
}

} // namespace

TEST(Opening, everyBrokenRuleHasItsCodeAndLines)
{
    const auto bad = [](const std::string& from, const std::string& to) { return damaged(good, from, to); };
    const auto withTrailer = [](const char* entries) { return std::string(PdfText().pages().trailer(entries)); };
    const std::tuple<const char*, std::string, std::uint32_t, Lines> refusals[] = {
        {"an empty file has no header line", "", ErrNoHeaderLine, {}},
        {"an empty first line is none", "\n" + good, ErrNoHeaderLine, {}},
        {"nothing stands before the header", "x" + good, ErrBadHeader, {}},
        {"a version has a point", bad("1.7", "17"), ErrBadHeader, {}},
        {"1.7 is the last 1", bad("1.7", "1.8"), ErrBadHeader, {"Unsupported minor version for major version 1: 8"}},
        {"2.0 the only 2", bad("1.7", "2.1"), ErrBadHeader, {"Unsupported minor version for major version 2: 1"}},
        {"there is no version 3", bad("1.7", "3.0"), ErrBadHeader, {"Unsupported major version: 3"}},
        {"nothing follows the version", bad("1.7", "1.7 "), ErrBadHeader, {"Unsupported minor version: 7 "}},
        {"a header line ends", "%PDF-1.7", ErrBadLineEnding, {}},
        {"a blank is refused behind the end marker", good + " ", ErrNoEofMarker, {}},
        {"the end marker is there", bad("%%EOF", "%%EOG"), ErrNoEofMarker, {}},
        {"no blank stands behind the offset", bad("\n%%EOF", " \n%%EOF"), ErrNoStartXref, {}},
        {"the keyword is there", bad("startxref", "startxxxx"), ErrNoStartXref, {}},
        {"no blank stands behind trailer", bad("trailer\n", "trailer "), ErrNoTrailerKeyword, {}},
        {"a trailer does not end in four brackets", withTrailer("/A << >>>>%"), ErrNoTrailerKeyword, {}},
        {"the offset is a number", bad("startxref\n", "startxref\n\n"), ErrBadTrailer, {}},
        {"the trailer has pairs", withTrailer("/A"), ErrBadTrailer,
            {"Uneven number of values in dictionary: 3h (3); offset: BCh (188)"}},
        {"the offset leads to the table", bad("startxref\n", "startxref\n1"), ErrBadXref, {}},
        {"the table begins with its keyword", bad("xref\n0", "xrex\n0"), ErrBadXref, {}},
        {"the subsection has two numbers", withTable("0 2 1\n"), ErrBadXref, {}},
        {"its first id has 32 bits", withTable("4294967296 0\n"), ErrBadXref, {}},
        {"its lines are all there", withTable("0 18446744073709551615\n0000000000 65535 f \n"), ErrBadXref,
            {"XRef entry 1h (1) is invalid: trailer"}},
        {"a generation goes up to 65536", withTable("0 1\n0 65537 f\n"), ErrBadXref,
            {"XRef entry 0h (0) is invalid: 0 65537 f"}},
        {"an entry is free or in use", withTable("0 1\n0 65535 x\n"), ErrBadXref,
            {"XRef entry 0h (0) is invalid: 0 65535 x"}},
        {"an entry has three pieces", withTable("0 1\n0 65535 f f\n"), ErrBadXref,
            {"XRef entry 0h (0) is invalid: 0 65535 f f"}},
        {"an entry in use has an offset", withTable("0 1\n0 0 n\n"), ErrBadXref,
            {"In use object reference is at offset 0: 0h (0)"}},
        {"an offset lies inside the file", withTable("1 1\n9999 0 n\n"), ErrBadObject,
            {"Failed to read object at 270Fh (9999)"}},
        {"the header has the table's id", withTable("2 1\n9 0 n\n"), ErrBadObject,
            {"ID for object at 9h (9) differs; expected 2h (2), but got 1h (1)", "Failed to read object at 9h (9)"}},
        {"the header has the table's generation", withTable("1 1\n9 1 n\n"), ErrBadObject,
            {"Generation for object at 9h (9) differs; expected 1h (1), but got 0h (0)",
                "Failed to read object at 9h (9)"}},
        {"obj stands apart", bad("3 0 obj\n", "3 0 obj<"), ErrBadObject, {"Failed to read object at 75h (117)"}},
        {"an id is a number", bad("3 0 obj", "x 0 obj"), ErrBadObject,
            {"Object id is invalid: x; offset: 75h (117)", "Failed to read object at 75h (117)"}},
        {"a generation has 16 bits", bad("3 0 obj\n<< /Type", "3 65536 obj (x) "), ErrBadObject,
            {"Object generation is invalid: 65536; offset: 75h (117)", "Failed to read object at 75h (117)"}},
    };
    LogCapture log;
    for (const auto& [rule, file, code, lines] : refusals) {
        SCOPED_TRACE(rule);
        Error::set(0);
        EXPECT_EQ(codeOf(open(file)), code);
        EXPECT_EQ(log.take(), lines);
    }
    EXPECT_EQ(codeOf(PDF::Document::create(nullptr)), ErrNullArgument);
    for (const std::uint64_t width : {0u, 1u, 8u})
        EXPECT_EQ(codeOf(PDF::Document::create(make<TestStripe>(good, Fault(), width))),
            ErrInvalidArgument) << width;
}

TEST(Opening, takesEveryVersionAndLineEnding)
{
    const std::pair<const char*, std::uint32_t> versions[] = {{"1.0", 1}, {"1.3", 4}, {"1.7", 8}, {"2.0", 13}};
    for (const char* ending : {"\n", "\r", "\r\n"})
        for (const auto& [version, number] : versions) {
            const Ref<PDF::Document> document = open(PdfText(ending, version).pages());
            ASSERT_TRUE(document) << version;
            EXPECT_EQ(document->version(), number);
            EXPECT_EQ(plain(PDF::lineEndingOf(document)), ending);
            EXPECT_EQ(plain(PDF::versionToString(number)), std::string("PDF-") + version);
            EXPECT_FALSE(document->changed());
        }
    LogCapture log;
    EXPECT_FALSE(PDF::versionToString(9));
    EXPECT_EQ(log.take(), Lines{"PDF version can not be converted to string 9h (9)"});
}

TEST(Opening, isStrictOnlyWhereTheRulesAre)
{
    const std::string accepted[] = {
        good + "\r\n\n",
        damaged(good, "\n%%EOF", "\n\n%%EOF"),
        damaged(good, "startxref\n", "startxref\r\n"),
        damaged(good, "trailer\n", "trailer\n\r\n"),
        damaged(good, "3 0 obj\n<< /Type", "3  0 obj << /Typ"),
        damaged(good, "0000000000 65535 f \n", "0 65536 f\n"),
        PdfText().pages().trailer("/Prev 9999 /Encrypt 8 0 R"),
        withTable("0 0\n"),
        withTable("0 2\n0 65535 f\n9 0 n\n7 1\nnonsense\n"),
    };
    for (const std::string& file : accepted)
        EXPECT_TRUE(open(file)) << file;
}

TEST(Opening, idsCountUpFromTheFirstOfTheSubsection)
{
    // The running id wraps, and lookups still find every object.
    const Ref<PDF::Document> document = open(withTable("4294967295 4\n9 0 n\n35 0 n\n0 5 f\n52 7 n\n",
        "%PDF-1.4\n4294967295 0 obj\n1\nendobj\n0 0 obj\n2\nendobj\n2 7 obj\n3\nendobj\n"));
    ASSERT_TRUE(document);
    const auto textOf = [&document](std::uint32_t id, std::uint16_t generation) {
        const Ref<PDF::Object> object = document->object(make<PDF::ObjectRefObj>(id, generation));
        return object ? plain(object->value()->asText()) : "none";
    };
    EXPECT_EQ(textOf(4294967295, 0) + " " + textOf(0, 0) + " " + textOf(2, 7), "1.0 2.0 3.0");
    EXPECT_EQ(textOf(1, 0) + " " + textOf(2, 0), "none none");
    EXPECT_EQ(Error::get(), ErrNotFound);
    EXPECT_EQ(codeOf(document->object(nullptr)), ErrNullArgument);
    const std::vector<PDF::FreeRow>& freeRows = document.cast<PDF::DocumentObj>()->freeRows();
    ASSERT_EQ(freeRows.size(), 1u);
    EXPECT_EQ(freeRows[0].id, 1u);
    EXPECT_EQ(freeRows[0].generation, 5u);
}

TEST(Opening, nestingEndsAt500)
{
    LogCapture log;
    const auto nested = [](int depth, const char* opener, const char* closer) {
        return std::string(PdfText().pages().object(3, repeated(opener, depth) + "1" + repeated(closer, depth)));
    };
    for (const auto& [opener, closer] : {std::pair("[", "]"), std::pair("<</A ", ">>")}) {
        EXPECT_TRUE(open(nested(500, opener, closer)));
        EXPECT_TRUE(log.take().empty());
        EXPECT_EQ(codeOf(open(nested(501, opener, closer))), ErrBadObject);
        EXPECT_EQ(log.take().front().rfind("Values are nested too deeply; offset: ", 0), 0u);
        EXPECT_FALSE(open(nested(1000000, opener, "")));
        log.take();
    }
}

TEST(Catalog, eachStepHasItsCode)
{
    const std::string pages = "<< /Type /Pages /Kids [ 3 0 R ] >>";
    const std::string catalog = "<< /Type /Catalog /Pages 2 0 R >>";
    // Rule, catalog, pages, root, and the codes of the catalog, the root of the page tree, and the pages.
    using Codes = std::array<std::uint32_t, 3>;
    const std::tuple<const char*, std::string, std::string, std::string, Codes> cases[] = {
        {"a good file", catalog, pages, "1 0 R", {0, 0, 0}},
        {"no root", catalog, pages, "", {ErrNoRootRef, ErrNoRoot, ErrBadPages}},
        {"a direct root", catalog, pages, "<< >>", {ErrNoRootRef, ErrNoRoot, ErrBadPages}},
        {"a dangling root", catalog, pages, "9 0 R", {ErrNoRoot, ErrNoRoot, ErrBadPages}},
        {"a root that is no dictionary", "[ ]", pages, "1 0 R", {ErrNoRoot, ErrNoRoot, ErrBadPages}},
        {"another type", damaged(catalog, "Catalog", "Cat"), pages, "1 0 R", {ErrBadCatalog, ErrNoRoot, ErrBadPages}},
        {"no type", damaged(catalog, "/Type /Catalog", ""), pages, "1 0 R", {ErrBadCatalog, ErrNoRoot, ErrBadPages}},
        {"direct pages", damaged(catalog, "2 0 R", pages), pages, "1 0 R", {0, ErrBadCatalog, ErrBadPages}},
        {"dangling pages", damaged(catalog, "2 0 R", "9 0 R"), pages, "1 0 R", {0, ErrBadPages, ErrBadPages}},
        {"pages that are no dictionary", catalog, "(x)", "1 0 R", {0, ErrBadPages, ErrBadPages}},
        {"pages of another type", catalog, damaged(pages, "/Pages", "/Page"), "1 0 R", {0, ErrBadPages, ErrBadPages}},
        {"no kids", catalog, "<< /Type /Pages >>", "1 0 R", {0, 0, ErrBadPages}},
        {"a direct kid", catalog, damaged(pages, "3 0 R", "3 0 R << >>"), "1 0 R", {0, 0, ErrBadPages}},
        {"a dangling kid", catalog, damaged(pages, "3 0 R", "3 0 R 9 0 R"), "1 0 R", {0, 0, ErrBadPages}},
        {"no pages", catalog, damaged(pages, "3 0 R", ""), "1 0 R", {0, 0, 0}},
    };
    for (const auto& [rule, catalogText, pagesText, root, codes] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document
            = open(PdfText().object(1, catalogText).object(2, pagesText).object(3, "<< >>").root(root));
        ASSERT_TRUE(document);
        EXPECT_EQ(codeOf(document->getCatalog()), codes[0]);
        EXPECT_EQ(codeOf(document->getPageCatalog()), codes[1]);
        Error::set(0);
        EXPECT_TRUE(document->getPages().empty() || codes[2] == 0) << "no part of a list is given";
        EXPECT_EQ(Error::get(), codes[2]);
    }
    LogCapture log;
    open(PdfText().pages().root(""))->getPages();
    EXPECT_EQ(log.take(), (Lines{"Key not found in dictionary: Root", "Failed to retrieve root object reference",
                              "Document has no root object", "Failed to retrieve pages object"}));
}

TEST(ValueAsDict, followsOneReferenceAndNoMore)
{
    const Ref<PDF::Document> document
        = open(PdfText().pages().object(3, "<< /A 1 0 R /B 9 0 R /C 4 0 R /D 7 /E << >> >>").stream(4, "x"));
    const auto entries = PDF::objectsOf(document)[2]->valueAsDictionary();
    const auto resolve = [&](const char* key) { return document->valueAsDict(entries->find(text(key))); };
    EXPECT_TRUE(resolve("A") == PDF::objectsOf(document)[0]->value().cast<PDF::Dictionary>());
    EXPECT_TRUE(resolve("E"));
    LogCapture log;
    const std::pair<const char*, std::uint32_t> failing[]
        = {{"B", ErrUnresolved}, {"C", ErrBadObject}, {"D", ErrBadObject}, {"none", ErrNullArgument}};
    for (const auto& [key, code] : failing)
        EXPECT_EQ(codeOf(resolve(key)), code) << key;
    EXPECT_EQ(log.take(),
        (Lines{"Failed to resolve object reference", "Invalid object type 7h (7)", "Invalid object type 3h (3)"}));
}

TEST(Opening, objectsInsideObjectsDoNotMultiplyTheWork)
{
    // Each string holds all the objects behind it; honest files, even those of one line, read each
    // character about once.
    std::string nested = "%PDF-1.4\n", flat = nested, rows = "1 3000\n", flatRows = rows;
    for (int id = 1; id <= 3000; ++id) {
        rows += std::to_string(nested.size()) + " 0 n\n";
        nested += std::to_string(id) + " 0 obj ( ";
        flatRows += std::to_string(flat.size()) + " 0 n\n";
        flat += std::to_string(id) + " 0 obj 5 ";
    }
    LogCapture log;
    EXPECT_EQ(codeOf(open(withTable(rows, nested + repeated(")", 3000) + "\n"))), ErrBadObject);
    EXPECT_EQ(log.lines.front().rfind("Objects overlap too often; offset: ", 0), 0u);
    EXPECT_TRUE(open(withTable(flatRows, flat + "\n")));
}
