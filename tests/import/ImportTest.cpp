#include <import/Import.h>

#include <host/files/ReadWatch.h>
#include <host/saving/Save.h>

#include <tests/import/Contents.h>
#include <tests/import/QpdfFiles.h>
#include <tests/support/PackedText.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

#include <thread>

using namespace Tests;
using Host::Reason;
using Import::Imported;
using Import::Options;

namespace {

const PackedText packed = PackedText().pages().packed(5, {{4, "[ (a) 7 0 R ]"}, {6, "12"}}).stream(7, "data");

Host::Result<Imported> import(const std::string& file, const Options& options = {})
{
    const TestFolder folder; // the file stays open
    return Import::open(folder.put("in.pdf", file), options);
}

// The written value of an object; "free" when there is none.
std::string valueOf(const Imported& imported, unsigned id)
{
    const Ref<PDF::Document>& document = imported.opened.document;
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        if (object->id() == id)
            return writtenTextOf(document, object->value());
    return "free";
}

} // namespace

TEST(Import, opensWhatAFileSaysHoweverItIsStored)
{
    const std::string contents = contentsOf(open(classic));
    const auto streams = [](QPDFWriter& writer) { writer.setObjectStreamMode(qpdf_o_generate); };
    const auto linearized = [](QPDFWriter& writer) { writer.setLinearization(true); };
    const auto both = [&](QPDFWriter& writer) { streams(writer), linearized(writer); };
    std::map<std::string, std::string> files = {
        {"classic", classic},
        {"junk before the header", "junk\n%PDF-x\n" + classic},
        {"trailer on one line", writtenByQpdf(classic, [](QPDFWriter&) {})},
        {"object streams", writtenByQpdf(classic, streams)},
        {"linearized", writtenByQpdf(classic, linearized)},
        {"linearized object streams", writtenByQpdf(classic, both)},
    };
    for (const char* method : {"40 bits", "RC4", "AES", "256 bits", "AES in object streams"})
        files[method] = encrypted(classic, "", method);
    for (const auto& [name, file] : files) {
        const auto imported = import(file);
        ASSERT_TRUE(imported) << name << ": " << imported.refusal().message;
        EXPECT_EQ(contentsOf(imported->opened.document), contents) << name;
        EXPECT_FALSE(imported->opened.document->changed());
        EXPECT_EQ(imported->report.objectStreams > 0, name.find("object streams") != name.npos) << name;
        EXPECT_EQ(imported->report.tables, name.starts_with("linearized") ? 2u : 1u) << name;
        EXPECT_EQ(imported->report.warnings, std::vector<std::string>()) << name;
    }
}

TEST(Import, givesEachObjectTheIdThatItHas)
{
    const std::string file = PackedText()
                                 .object(9,
                                     "<< /Length 7 0 R /Filter [ /FlateDecode ] /DecodeParms [ null ] >>\nstream\n"
                                     "abc\nendstream")
                                 .packed(
                                     5, {{1, "<< /Type /Catalog /Pages 2 0 R >>"}, {2, "<< /Type /Pages /Kids [ ] >>"}})
                                 .packed(6, {{4, "8 0 R"}, {7, "3"}, {8, "11 0 R"}, {10, "null"}, {11, "(x)"}})
                                 .object(12, "4 0 R")
                                 .object(13, "<< /A 6 0 R /B 77 0 R /C 7 1 R >>")
                                 .object(15,
                                     "<< /Length 3 /Filter [ /Crypt /A85 ] /DecodeParms [ << /Name /Identity >> "
                                     "<< /A 1 >> ] >>\nstream\nabc\nendstream")
                                 .object(16,
                                     "<< /Length 3 /Filter /Crypt /DecodeParms << /Name /Identity >> >>\nstream\n"
                                     "abc\nendstream");
    const auto imported = import(file);
    ASSERT_TRUE(imported) << imported.refusal().message;
    const std::pair<unsigned, const char*> values[] = {
        {1, "<< /Pages 2 0 R /Type /Catalog >>"}, {3, "free"}, {4, "(x)"}, {5, "free"}, {7, "3"},
        {9, "<< /Filter /FlateDecode /Length 3 >>\nstream\nabc\nendstream"}, {10, "free"}, {12, "(x)"},
        {13, "<< /A 6 0 R /B 77 0 R /C 7 1 R >>"},
        {15, "<< /DecodeParms [ << /A 1 >> ] /Filter [ /A85 ] /Length 3 >>\nstream\nabc\nendstream"},
        {16, "<< /Length 3 >>\nstream\nabc\nendstream"}, {17, "free"}, // the cross-reference stream
    };
    for (const auto& [id, value] : values)
        EXPECT_EQ(valueOf(*imported, id), value) << id;
    EXPECT_TRUE(valueOf(*imported, 6).starts_with("<< /First 24 /Length ")) << "13 refers to it";
    EXPECT_EQ(imported->report.replaced.names, std::vector<std::string>({"object 4", "object 8", "object 12"}));
    EXPECT_EQ(imported->report.objectStreams, 2u);
}

// Objects are let go of as they are written, in the order of their ids.
TEST(Import, readsWhatIsNeededOnceMoreAfterItWasWritten)
{
    const std::string file = PdfText()
                                 .pages()
                                 .object(3, "[ /FlateDecode ]")
                                 .object(4, "<< /Predictor 12 >>")
                                 .object(5, "<< /Length 6 0 R /Filter 3 0 R /DecodeParms [ 4 0 R ] >>\nstream\nabc\nendstream")
                                 .object(6, "3")
                                 .object(7, "2 0 R")
                                 .object(8, "[ 8 0 R ]")
                                 .object(9, "<< /Length 3 /Filter [ /A85 ] /DecodeParms 8 0 R >>\nstream\nabc\nendstream")
                                 .trailer("/Size 10");
    const auto imported = import(file);
    ASSERT_TRUE(imported) << imported.refusal().message;
    EXPECT_EQ(valueOf(*imported, 5), "<< /DecodeParms [ 4 0 R ] /Filter 3 0 R /Length 3 >>\nstream\nabc\nendstream");
    EXPECT_EQ(valueOf(*imported, 7), "<< /Count 0 /Kids [ ] /Type /Pages >>");
    EXPECT_EQ(valueOf(*imported, 9), "<< /DecodeParms 8 0 R /Filter [ /A85 ] /Length 3 >>\nstream\nabc\nendstream");
    EXPECT_EQ(imported->report.replaced.count, 1u);
}

TEST(Import, looksAtParametersInLinearTime)
{
    const std::string stream = "<< /Length 3 /Filter /A85 /DecodeParms [ 4 0 R ] >>\nstream\nabc\nendstream";
    PdfText text = PdfText().pages().object(3, stream);
    for (unsigned id = 4; id < 7; ++id) { // each a thousand times the next one
        std::string references;
        for (int i = 0; i < 1000; ++i)
            references += std::to_string(id + 1) + " 0 R ";
        text.object(id, "[ " + references + "]");
    }
    const auto imported = import(text.object(7, "[ 1 ]").trailer("/Size 8"));
    ASSERT_TRUE(imported) << imported.refusal().message;
    EXPECT_EQ(valueOf(*imported, 3), "<< /DecodeParms [ 4 0 R ] /Filter /A85 /Length 3 >>\nstream\nabc\nendstream");
    PdfText shared = PdfText().pages();
    for (unsigned id = 3; id < 5000; ++id)
        shared.object(id, "<< /Length 3 /Filter [ /A85 ] /DecodeParms 5000 0 R >>\nstream\nabc\nendstream");
    std::string nulls;
    for (int i = 0; i < 300'000; ++i)
        nulls += "null ";
    EXPECT_TRUE(import(shared.object(5000, "[ " + nulls + "]").trailer("/Size 5001")));
}

TEST(Import, followsReferencesThatAreObjectsToTheirEnd)
{
    const unsigned last = 20000; // each leads to the one before it
    PdfText text = PdfText().pages().object(3, "4 0 R").object(4, "5 0 R").object(5, "(x)");
    text.object(6, "7 0 R").object(7, "6 0 R").object(8, "3 0 R");
    for (unsigned id = 9; id <= last; ++id)
        text.object(id, std::to_string(id - 1) + " 0 R");
    const auto imported = import(text.trailer("/Size " + std::to_string(last + 1)));
    ASSERT_TRUE(imported) << imported.refusal().message;
    for (const unsigned id : {3u, 4u, 5u, 8u, last})
        EXPECT_EQ(valueOf(*imported, id), "(x)") << id;
    for (const unsigned id : {6u, 7u})
        EXPECT_EQ(valueOf(*imported, id), "free") << id;
    EXPECT_EQ(imported->report.replaced.count, last - 3u);
}

TEST(Import, namesWhatTheCoreCantHold)
{
    const auto imported = import(
        PackedText().packed(3, {{1, "<< /Type /Catalog /K [ / << / 1 >> 99999999999999999999.5 ] >>"}, {2, "/"}}));
    ASSERT_TRUE(imported) << imported.refusal().message;
    EXPECT_EQ(valueOf(*imported, 1), "<< /K [ null << >> 9223372036854775807 ] /Type /Catalog >>");
    EXPECT_EQ(valueOf(*imported, 2), "free");
    const Import::Report& report = imported->report;
    EXPECT_EQ(report.emptyNames.names, std::vector<std::string>({"object 1, /K 0", "object 1, /K 1 /", "object 2"}));
    EXPECT_EQ(report.rounded.names, std::vector<std::string>({"object 1, /K 2"}));
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += "/ ";
    const auto counted = import(PackedText().packed(3, {{1, "<< /Type /Catalog /K [ " + many + "] >>"}}));
    EXPECT_EQ(counted->report.emptyNames.count, 1000u);
    EXPECT_EQ(counted->report.emptyNames.names.size(), 100u);
}

TEST(Import, takesTheNearestVersionThatTheCoreHas)
{
    const std::tuple<const char*, std::uint32_t, const char*> versions[] = {{"1.4", 5, ""}, {"2.0", 13, ""},
        {"1.8", 8, "1.8"}, {"1.40", 8, "1.40"}, {"0.9", 1, "0.9"}, {"2.1", 13, "2.1"}, {"3.0", 13, "3.0"}};
    for (const auto& [version, number, unknown] : versions) {
        const auto imported = import(damaged(packed, "%PDF-1.5", std::string("%PDF-") + version));
        ASSERT_TRUE(imported) << imported.refusal().message;
        EXPECT_EQ(imported->opened.document->version(), number);
        EXPECT_EQ(imported->report.unknownVersion, unknown);
    }
}

TEST(Import, refusesWhatLibqpdfWouldMendUnlessThatIsAllowed)
{
    struct Case {
        const char* rule;
        std::string file;
        const char* message;
        bool isOpenedByRepair;
    };
    const std::string size = "/Size 9";
    const Case cases[] = {
        {"a number that nothing holds",
            PdfText().object(1, "<< /Type /Catalog /A 99999999999999999999 >>").trailer(size),
            "overflow/underflow converting 99999999999999999999", false},
        {"the same elsewhere", PdfText().pages().object(3, "99999999999999999999").trailer(size), "overflow/underflow",
            true},
        {"a wrong length", PdfText().pages().object(3, "<< /Length 2 >>\nstream\nabcd\nendstream").trailer(size),
            "expected endstream", true},
        {"a row that leads elsewhere", damaged(PdfText().pages().object(3, "(a)").trailer(size), "3 0 obj", "4 0 obj"),
            "expected 3 0 obj", true},
        {"no table", damaged(PdfText().pages().trailer(size), "startxref", "startwhat"), "can't find startxref", true},
        {"an unknown word", PdfText().pages().object(3, "[ word ]").trailer(size), "unknown token", true},
        {"parameters of parameters without end, found by repair",
            PackedText().pages().object(4, "[ 4 0 R ]").packed(5, {{6, "1"}}, "/DecodeParms [ 4 0 R ]").row(5, 1, 9, 0),
            "expected 5 0 obj", true},
        {"more than a value", PdfText().pages().object(3, "(a) (b)").trailer(size), "expected endobj", true},
        {"a reference to what can't be one", PdfText().pages().object(3, "[ 4294967297 0 R ]").trailer(size),
            "requested value of integer is too big", true},
        {"an object that its stream doesn't have", PackedText(packed).row(8, 2, 5, 2),
            "object 8 is not in object stream 5", true},
        {"an object that ends in the next one", damaged(packed, "[ (a) 7 0 R ]", "[ (a) 7 0 R  "), "unexpected EOF",
            true},
        {"more than a value in a stream", damaged(packed, "[ (a) 7 0 R ]", "[ (a) ] 7 0 R"), "object 4 goes on", true},
        {"no such object stream", PackedText(packed).row(8, 2, 77, 0), "supposed object stream 77 is not a stream",
            true},
        {"values too deep", PackedText().pages().packed(5, {{4, std::string(501, '[') + std::string(501, ']')}}),
            "excessively deeply nested", true},
        {"no catalog", damaged(packed, "/Root 1 0 R", "/Root 4 0 R"), "unable to find /Root", false},
        {"no PDF file", "nothing", "can't find PDF header", false},
        {"nothing", "", "can't find PDF header", false},
    };
    for (const Case& row : cases) {
        const auto strict = import(row.file);
        ASSERT_FALSE(strict) << row.rule;
        EXPECT_NE(strict.refusal().message.find(row.message), std::string::npos)
            << row.rule << ": " << strict.refusal().message;
        EXPECT_EQ(strict.refusal().reason, Reason::BrokenRule) << row.rule;
        const auto repaired = import(row.file, {.isRepairAllowed = true});
        EXPECT_EQ(bool(repaired), row.isOpenedByRepair)
            << row.rule << ": " << (repaired ? "" : repaired.refusal().message);
        if (repaired) {
            EXPECT_TRUE(repaired->report.isRepaired && !repaired->report.warnings.empty()) << row.rule;
        }
    }
}

TEST(Import, opensWhatLibqpdfWarnsOfAndLosesNothing)
{
    const std::string file = PdfText().pages().object(3, "<< /A 1 /A 2 /B#G 3 >>").object(4, "").trailer("/Size 2");
    const auto imported = import(damaged(file, "0000000000 65535 f", "0000000000 65535 f"));
    ASSERT_TRUE(imported) << imported.refusal().message;
    EXPECT_EQ(valueOf(*imported, 3), "<< /A 2 /B#G 3 >>");
    EXPECT_EQ(imported->report.warningCount, 4u);
    EXPECT_EQ(
        imported->report.warnings[0], "reported number of objects (2) is not one plus the highest object number (4)");
    EXPECT_FALSE(imported->report.isRepaired);
}

TEST(Import, asksForThePassword)
{
    // The same in three encodings, of which older files have the second or the third.
    const std::string utf8 = "gr\xC3\xBC\xC3\x9F";
    for (const char* method : {"40 bits", "RC4", "AES", "256 bits", "AES in object streams"}) {
        const bool isUtf8 = std::string(method).starts_with("256") || std::string(method).ends_with("streams");
        const std::string file = encrypted(classic, isUtf8 ? utf8.c_str() : "gr\xFC\xDF", method);
        for (const char* password : {"", "wrong"}) {
            const auto refused = import(file, {.password = password});
            ASSERT_FALSE(refused);
            EXPECT_EQ(refused.refusal().reason, Reason::PasswordNeeded);
            EXPECT_EQ(refused.refusal().message,
                *password ? "is encrypted, and the password is wrong" : "is encrypted and needs a password");
        }
        for (const std::string& password : {utf8, std::string("owner")}) {
            const auto imported = import(file, {.password = password});
            ASSERT_TRUE(imported) << method << ": " << imported.refusal().message;
            EXPECT_EQ(contentsOf(imported->opened.document), contentsOf(open(classic))) << method;
            EXPECT_TRUE(imported->report.isDecrypted);
            const Import::Permissions permissions = imported->report.permissions.value();
            EXPECT_EQ(permissions.isOwner, password == "owner");
            EXPECT_FALSE(permissions.mayPrint);
            EXPECT_TRUE(permissions.mayCopy);
        }
    }
}

TEST(Import, keepsWithinItsLimits)
{
    const auto bomb = [](std::size_t size, const std::string& entries, const std::string& filter = "/FlateDecode") {
        const std::string data = compressed("4 0 " + std::string(size, ' ') + "1");
        return std::string(PackedText()
                               .pages()
                               .stream(5, data, "/Type /ObjStm /N 1 /First 4 /Filter " + filter + " " + entries)
                               .row(4, 2, 5, 0));
    };
    std::string overlapping;
    std::string atOnePlace;
    for (int i = 0; i < 3000; ++i) {
        overlapping += std::to_string(10 + i) + " " + std::to_string(i) + " ";
        atOnePlace += std::to_string(10 + i) + " 0 ";
    }
    PackedText nested;
    PackedText blank;
    blank.pages().stream(5, atOnePlace + "1" + std::string(3000, ' '),
        "/Type /ObjStm /N 3000 /First " + std::to_string(atOnePlace.size()));
    nested.pages().stream(5, overlapping + std::string(3000, '(') + std::string(3000, ')'),
        "/Type /ObjStm /N 3000 /First " + std::to_string(overlapping.size()));
    // Each object is a comment that the next one begins in.
    PackedText again = PackedText().object(1, "<< /Type /Catalog >>");
    const std::size_t start = std::string("%PDF-1.5\n1 0 obj\n<< /Type /Catalog >>\nendobj\n9 0 obj\n").size();
    std::string comment;
    for (unsigned id = 10; id < 3010; ++id) {
        nested.row(id, 2, 5, id - 10);
        blank.row(id, 2, 5, id - 10);
        comment += "% ";
        again.row(id, 1, start + comment.size(), 0);
        comment += std::to_string(id) + " 0 obj ";
    }
    again.object(9, comment + std::string(1'000'000, ' ') + "\n5");
    std::string far = damaged(
        PdfText().pages().object(3, "     (a)").trailer("/Size 9"), "3 0 obj\n     (a)", "200000 0 obj\n(a)");
    const std::string row = "0000000" + std::to_string(far.find("200000")) + " 00000 n \n";
    far = damaged(damaged(far, row, "0000000000 65535 f \n"), "trailer", "200000 1\n" + row + "trailer");
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"decoded data", bomb(2'000'000, ""), "object streams have too much data"},
        {"rows of a predictor", bomb(9, "/DecodeParms << /Predictor 12 /Columns 2000000000 >>"), "within bounds"},
        {"filters", bomb(9, "", "[ /FlateDecode /FlateDecode /FlateDecode ]"), "within bounds"},
        {"what a dictionary refers to", bomb(9, "/X 1 0 R"), "refers to other objects"},
        {"the same in another value", bomb(9, "", "[ /Extends 1 0 R ]"), "refers to other objects"},
        {"objects inside each other in a stream", nested, "overlap too often"},
        {"blanks after objects in a stream", blank, "overlap too often"},
        {"objects inside each other", again, "overlap too often"},
        {"ids", far, "ids go up to 200000"},
        {"rows of tables", PackedText(packed).trailer("/Index [ 0 4 7 2000000 ]"), "tables have 2000004 rows"},
        {"filters of tables", PackedText(packed).trailer("/Filter [ /FlateDecode /FlateDecode ]"), "within bounds"},
        {"predictors of tables", PackedText(packed).trailer("/DecodeParms << /Columns 100000 >>"), "within bounds"},
        {"tables that lead elsewhere", PackedText(packed).trailer("/Filter 7 0 R"), "within bounds"},
        {"the image", PackedText(packed).stream(9, std::string(1'100'000, 'x')), "more than 1000000 bytes"},
    };
    for (const auto& [rule, file, message] : cases)
        for (const bool isRepairAllowed : {false, true}) {
            const auto refused = import(file, {.isRepairAllowed = isRepairAllowed, .limit = 1'000'000});
            ASSERT_FALSE(refused) << rule;
            EXPECT_EQ(refused.refusal().reason, Reason::LimitReached) << rule << ": " << refused.refusal().message;
            EXPECT_NE(refused.refusal().message.find(message), std::string::npos) << refused.refusal().message;
        }
    EXPECT_TRUE(import(PackedText()
                           .pages()
                           .object(7, "5")
                           .object(5, "<< /Length 7 0 R /Type /ObjStm /N 1 /First 4 >>\nstream\n4 0 9\nendstream")
                           .row(4, 2, 5, 0)))
        << "a length may be elsewhere";
}

TEST(Import, refusesAFileThatChangesMeanwhile)
{
    const TestFolder folder;
    const std::string path = folder.put("in.pdf", PackedText(packed).stream(9, std::string(100'000, 'x')));
    bool isToChange = true;
    const Host::ReadWatch watch([&](std::uint64_t, std::uint64_t) {
        if (std::exchange(isToChange, false))
            std::ofstream(path, std::ios::app) << " ";
    });
    const auto refused = Import::open(path);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.refusal().reason, Reason::ChangedMeanwhile);
    const auto missing = Import::open(folder.path("missing.pdf"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.refusal().reason, Reason::Unreadable);
    EXPECT_EQ(Import::open(Ref<Host::FileStripe>()).refusal().code, ErrNullArgument);
}

TEST(Import, isSavedAsAnyOther)
{
    const TestFolder folder;
    const auto imported = import(writtenByQpdf(classic, [](QPDFWriter&) {}));
    ASSERT_TRUE(imported);
    const auto saved = Host::save(imported->opened, folder.path("out.pdf"));
    ASSERT_TRUE(saved) << saved.refusal().message;
    const auto reopened = Host::open(folder.path("out.pdf"));
    ASSERT_TRUE(reopened) << reopened.refusal().message;
    EXPECT_EQ(contentsOf(reopened->document), contentsOf(imported->opened.document));
}

TEST(Import, worksInTwoThreadsAtOnce)
{
    const TestFolder folder;
    const std::string path = folder.put("in.pdf", encrypted(classic, "", "AES in object streams"));
    const auto work = [&] {
        for (int i = 0; i < 20; ++i)
            ASSERT_TRUE(Import::open(path));
    };
    std::thread other(work);
    work();
    other.join();
}
