#include <host/saving/Save.h>

#include <document/Editing.h>

#include <tests/support/Streams.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

using namespace Tests;
using namespace Host;

namespace {

bool holds(const std::string& text, const std::string& piece)
{
    return text.find(piece) != text.npos;
}

const SaveOptions partial{.isPartialAllowed = true};
const SaveOptions unchecked{.isPartialAllowed = true, .isUnverified = true};

struct Save : testing::Test {
    const TestFolder folder;
};

} // namespace

TEST_F(Save, whatHasItAllComesBack)
{
    const auto with = [](const char* value) { return PdfText().pages().object(3, value); };
    const std::pair<std::string, const char*> cases[] = {
        {with("[ 1.05 -0.5 -.05 +1.50 1.-5 -0 00.0 ]"), "[ 1.05 -0.5 -.05 +1.50 1.-5 -0 00.0 ]"},
        {with("[ (a\\\\b) (a\\134b) (\\201\\237) (\\200\\377) (\\\\\\() ]").object(12, "(\\134n)"),
            "(a\\\\b) (a\\134b)"},
        {with("[ (\x80\x9F\x8D) <123> ]"), "[ (\x80\x9F\x8D) <123> ]"},
        {PdfText().pages().trailer("/ID [ (a\\134\\074\\074) <9> ] /X (\\\\n)"), "(a\\134\\074\\074)"},
        {PdfText("\r").pages().object(3, "<< /Length 5 >> stream\r\n\ndata\rendstream"), "stream\r\n\ndata\r"},
        {PdfText("\r\n").pages().stream(3, "\ndata"), "stream\r\n\ndata\r\n"},
        {PdfText("\r").pages().object(7, "<< /Length 5 >> stream\r\ndata\rendstream"), "stream\r\ndata\rendstream"},
    };
    for (const auto& [file, piece] : cases) {
        const auto opened = Host::open(folder.put("in.pdf", file));
        ASSERT_TRUE(opened) << file;
        const auto saved = save(*opened, folder.path("out.pdf"), {.isIdKept = true});
        EXPECT_TRUE(saved) << saved.refusal().message << file;
        EXPECT_TRUE(holds(folder.get("out.pdf"), piece)) << folder.get("out.pdf");
        ASSERT_TRUE(save(*Host::open(folder.path("out.pdf")), folder.path("twice.pdf")));
        ASSERT_TRUE(save(*Host::open(folder.path("twice.pdf")), folder.path("again.pdf")));
        EXPECT_TRUE(folder.get("twice.pdf") == folder.get("again.pdf"));
    }
}

TEST_F(Save, whatWasReadOtherwiseComesBackUntilItChanges)
{
    const std::string value = "<< /A [ 1[2]3 ]/B<</C 1/C [ 1(x) ]>>/D<4G>/E [ -0 0 R ] >>";
    const std::string file = PdfText().pages().object(3, value);
    const auto opened = *Host::open(folder.put("in.pdf", file));
    ASSERT_TRUE(save(opened, folder.path("out.pdf")));
    EXPECT_TRUE(holds(folder.get("out.pdf"), "3 0 obj\n" + value + "\nendobj"));
    const Ref<PDF::Dictionary> dictionary
        = PDF::valueAs<PDF::Dictionary>(PDF::objectsOf(opened.document)[2]->value());
    ASSERT_TRUE(dictionary->set(text("F"), make<PDF::NullObj>()));
    const auto refused = save(opened, folder.path("out.pdf"));
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.refusal().message.ends_with(" in hexadecimal strings (1, object 3)"));
    ASSERT_TRUE(save(opened, folder.path("out.pdf"), {.isLossyAllowed = true}));
    EXPECT_TRUE(holds(folder.get("out.pdf"), "/A [ 1[2]3 ] /B <</C 1/C [ 1(x) ]>> /D")) << "other parts stay";
}

TEST_F(Save, plainlyRefusesWhatWouldNotComeBack)
{
    // What the options still refuse: nothing, the comparison, or what is looked at beforehand.
    enum Refusing { Nobody, Comparing, Beforehand };
    const auto plainly = [this](const Ref<PDF::Document>& document, SaveOptions options) {
        options.isPlain = true;
        return save(document, folder.path("target"), options);
    };
    const auto with = [](const char* value) { return PdfText().pages().object(3, value); };
    const auto withTrailer = [](const char* entries) { return PdfText().pages().trailer(entries); };
    const std::string backslash = "a string in it has a backslash";
    const std::string unreadable = " could not be read back: " + backslash;
    const std::string otherwise = " would not be read back as it is written: ";
    const std::tuple<const char*, std::string, Refusing, std::string> cases[] = {
        {"a plain document", with("(text \\( \\033 \\200)"), Nobody, ""},
        {"every line ending", PdfText("\r").pages().stream(3, "data\r"), Nobody, ""},
        {"CR LF before a line feed", PdfText("\r\n").pages().stream(3, "\ndata"), Nobody, ""},
        {"names with two backslashes", with("/a\\\\b"), Nobody, ""},
        {"a gap in the ids", with("1").object(12, "2"), Comparing, "object 12 is written as row 4 of the table"},
        {"a backslash that makes the object unreadable", with("(a\\134)"), Comparing, "object 3" + unreadable},
        {"a backslash that is read as something else", with("1").object(4, "[ (a\\134n) ]"), Comparing,
            "object 4" + otherwise + backslash},
        {"a backslash in a stream's dictionary", PdfText().pages().stream(3, "data", "/F (a\\134n)"), Comparing,
            "object 3" + otherwise + backslash},
        {"a backslash in the trailer", withTrailer("/ID [ (a\\134) (b) ]"), Comparing, "the trailer" + unreadable},
        {"a backslash in the trailer that is read as something else", withTrailer("/ID [ (a\\134n) ]"), Comparing,
            "the trailer" + otherwise + backslash},
        {"CR before a line feed",
            PdfText("\r").pages().object(3, "<< /Length 5 >> stream\r\n\ndata\rendstream"), Comparing,
            "object 3" + otherwise + "its data begins with a line feed"},
        {"no objects", PdfText().root(""), Beforehand, "has no objects"},
        {"no catalog", PdfText().pages().root("2 0 R"), Beforehand, "has no catalog"},
        {"an updated file", withTrailer("/Prev 9"), Beforehand, "(Prev)"},
        {"a hybrid file", withTrailer("/XRefStm 9"), Beforehand, "(XRefStm)"},
        {"an encrypted file", withTrailer("/Encrypt 9 0 R"), Beforehand, "(Encrypt)"},
    };
    for (const auto& [rule, file, refusing, words] : cases) {
        SCOPED_TRACE(rule);
        const std::string target = folder.put("target", "old");
        const Ref<PDF::Document> document = Tests::open(file);
        ASSERT_TRUE(document);
        const auto saved = plainly(document, {});
        EXPECT_EQ(bool(saved), refusing == Nobody);
        EXPECT_TRUE(saved || holds(saved.refusal().message, words)) << saved.refusal().message;
        EXPECT_TRUE(saved || (saved.refusal().reason == Reason::Difference) == (refusing == Comparing));
        EXPECT_EQ(folder.get("target") == "old", refusing != Nobody);
        EXPECT_EQ(bool(save(document, target)), refusing != Beforehand) << "exactly";
        EXPECT_EQ(bool(plainly(document, partial)), refusing != Comparing);
        EXPECT_EQ(bool(plainly(document, {.isUnverified = true})), refusing != Beforehand);
        EXPECT_TRUE(plainly(document, unchecked));
        EXPECT_TRUE(folder.get("target") == written(document));
        EXPECT_EQ(folder.count(), 1);
    }
}

TEST_F(Save, overItsOwnSourceAsOftenAsOneLikes)
{
    const std::string path = folder.put("file.pdf", PdfText().pages().stream(3, "data in the file").stream(4, "more"));
    auto opened = *Host::open(path);
    const Ref<PDF::Dictionary> catalog = opened.document->getCatalog()->valueAsDictionary();
    for (const long long value : {1, 2, 3}) {
        catalog->set(::String::create("N"), make<PDF::NumberObj>(value, 0));
        auto saved = save(opened, path);
        ASSERT_TRUE(saved) << saved.refusal().message;
        EXPECT_EQ(saved->size, folder.get("file.pdf").size());
        EXPECT_EQ(saved->durability, Durability::Synced);
        EXPECT_TRUE(holds(folder.get("file.pdf"), "/N " + std::to_string(value)));
        EXPECT_FALSE(opened.document->trailer()->find(::String::create("Size"))) << "the document stays as it is";
        EXPECT_TRUE(holds(folder.get("file.pdf"), "stream\ndata in the file\nendstream"));
    }
}

TEST_F(Save, refusesASourceThatWasChangedInPlace)
{
    const std::string path = folder.put("file.pdf", PdfText().pages().stream(3, "data in the file"));
    const auto opened = *Host::open(path);
    std::ofstream(path, std::ios::app) << "\n";
    EXPECT_TRUE(holds(save(opened, folder.path("out.pdf")).refusal().message, "was changed since"));
    EXPECT_TRUE(save(opened, folder.path("out.pdf"), partial));
    fs::resize_file(path, 100);
    EXPECT_TRUE(save(*Host::open(folder.path("out.pdf")), path)) << "what is replaced may be anything";
}

TEST_F(Save, aSourceThatShrinksIsAFailureToRead)
{
    const std::string text = PdfText().pages().stream(3, std::string(50000, 'x')).object(4, "4");
    const std::string path = folder.put("file.pdf", text);
    const auto opened = *Host::open(path);
    fs::resize_file(path, 20000);
    const auto saved = save(opened, folder.path("out.pdf"), unchecked);
    ASSERT_FALSE(saved);
    EXPECT_TRUE(holds(saved.refusal().message, "became shorter")) << saved.refusal().message;
    EXPECT_EQ(saved.refusal().code, ErrWriteObject);
    EXPECT_EQ(folder.count(), 1);
}

TEST_F(Save, whenStrictRefusesWhatLosesItsMeaning)
{
    const SaveOptions strict{.isStrict = true};
    const auto good = Host::open(folder.put("good.pdf", PdfText().pages().object(3, "[ 1.05 ] % a comment")));
    EXPECT_TRUE(save(*good, folder.path("out.pdf"), strict));
    const auto bad = Host::open(folder.put("bad.pdf", PdfText().pages().object(3, "[ 1 ] 2").object(4, "1 0 R")));
    const auto refused = save(*bad, folder.path("out.pdf"), strict);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.refusal().message, "saving loses reference as an object (1), other value (1)");
    EXPECT_EQ(refused.refusal().reason, Reason::Lossy);
    EXPECT_TRUE(holds(folder.get("out.pdf"), "[ 1.05 ]")) << "nothing was written";
    EXPECT_EQ(save(*good, folder.path("none/out.pdf")).refusal().reason, Reason::UnusableTarget);
    EXPECT_FALSE(save(bad->document, folder.path("out.pdf"), strict)) << "nothing is known of its file";
}

TEST_F(Save, refusesWhatWasReadOtherwiseThanItIsMeant)
{
    const auto fileOf = [](const char* value) { return PdfText().pages().object(3, value); };
    const std::pair<std::string, std::string> cases[] = {
        {fileOf("12(x) ").object(4, "1 0 R"),
            "words glued to a bracket (1, object 3), references as objects (1, object 4)"},
        {fileOf("<< /Length 2 >> stream\ndata\nendstream"), "ends of stream data (1, object 3)"},
        {damaged(fileOf("1"), "trailer", "9 1\n0000000009 00000 n\ntrailer"), "several parts"},
    };
    for (const auto& [file, words] : cases) {
        const auto opened = *Host::open(folder.put("file.pdf", file));
        const auto refused = save(opened, folder.path("out.pdf"));
        ASSERT_FALSE(refused);
        const bool isPartial = refused.refusal().reason == Reason::Partial;
        EXPECT_TRUE(isPartial || refused.refusal().reason == Reason::Lossy);
        EXPECT_TRUE(refused.refusal().message.ends_with(words) || isPartial) << refused.refusal().message;
        EXPECT_TRUE(save(opened, folder.path("out.pdf"), {.isPartialAllowed = isPartial, .isLossyAllowed = !isPartial}));
        EXPECT_FALSE(save(opened, folder.path("out.pdf"), {.isPartialAllowed = !isPartial, .isLossyAllowed = isPartial}));
        // What a document holds in memory doesn't depend on the file.
        auto detached = *Host::open(folder.path("out.pdf"));
        ASSERT_TRUE(!detach(detached));
        std::ofstream(folder.path("out.pdf")) << "x";
        EXPECT_TRUE(save(detached, folder.path("out.pdf"), unchecked));
    }
    // One string to the format, which the order of the keys would take apart.
    const auto open = *Host::open(folder.put("file.pdf", fileOf("<< /Z (a\\\\(b) /B (c\\\\)) >>")));
    EXPECT_TRUE(holds(save(open, folder.path("out.pdf")).refusal().message, "strings that end too early (1, object 3)"));
}

TEST_F(Save, refusesNamesThatWouldBeSeveralValues)
{
    const auto opened = *Host::open(folder.put("in.pdf", PdfText().pages().object(3, "<< /A 1 >>")));
    const auto object = PDF::objectsOf(opened.document)[2]->valueAsDictionary();
    const auto array = [](Ref<PDF::Value> value) { return PDF::Array::create({value}); };
    const auto name = [](const char* characters) { return make<PDF::NameObj>(text(characters)); };
    const std::tuple<const char*, Ref<PDF::Value>, std::string> cases[] = {
        {"B", name("x /B 1"), "\"x /B 1\""},
        {"B", name("x"), ""},
        {"B 1 /C", name("x"), "\"B 1 /C\""},
        {"B", array(name("x 1")), "\"x 1\""},
        {"B", array(name("#20\\'\"!")), ""},
        {"B", name("x >>\nendobj\n"), "\"x >>#0Aendobj#0A\""},
        {"B", name("x%"), "\"x%\""},
        {"B", name(""), "\"\""},
        {"B", make<PDF::NameObj>(::String::create(0x141u)), "\"\u0141\""},
    };
    for (const auto& [key, value, shown] : cases) {
        SCOPED_TRACE(shown);
        ASSERT_TRUE(object->set(text(key), value));
        for (const bool isPlain : {false, true}) {
            const auto saved = save(opened, folder.path("out.pdf"), {.isPlain = isPlain});
            ASSERT_EQ(bool(saved), shown.empty());
            EXPECT_TRUE(saved || holds(saved.refusal().message, "object 3 ")) << saved.refusal().message;
            EXPECT_TRUE(saved || holds(saved.refusal().message, shown)) << saved.refusal().message;
        }
        ASSERT_TRUE(object->set(text(key), nullptr));
    }
}

TEST_F(Save, refusesAStreamWhoseDataIsInAnotherFile)
{
    const std::string file = PdfText().pages().stream(3, "data");
    const auto opened = *Host::open(folder.put("in.pdf", file));
    const auto other = *Host::open(folder.put("other.pdf", damaged(file, "data", "DATA")));
    PDF::addObject(opened.document, streamOf(other.document));
    const auto refused = save(opened, folder.path("out.pdf"), unchecked);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.refusal().message, "object 4 is a stream of another document's file");
    other.document->cacheStreams();
    ASSERT_TRUE(save(opened, folder.path("out.pdf")));
    EXPECT_TRUE(holds(folder.get("out.pdf"), "stream\nDATA"));
}

TEST_F(Save, refusesGapsThatNoTableShouldHave)
{
    const Ref<PDF::Document> document = Tests::open(
        "%PDF-1.4\n900000 0 obj\n(x)\nendobj\nxref\n900000 1\n9 0 n\ntrailer\n<< >>\nstartxref\n33\n%%EOF");
    ASSERT_TRUE(document);
    const auto saved = save(document, folder.path("out.pdf"), unchecked);
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.refusal().reason, Reason::LimitReached);
    EXPECT_EQ(folder.count(), 0);
}

TEST_F(Save, namesTheObjectWithoutUsableData)
{
    const auto document =
        Tests::open(PdfText().pages().object(3, "<< /Length 9999 >>\nstream\nshort\nendstream").object(4, "4"));
    const auto saved = save(document, folder.path("out.pdf"));
    EXPECT_EQ(saved.refusal().code, ErrWriteObject);
    EXPECT_TRUE(holds(saved.refusal().message, "object 3 can't be written: the Length of a stream"));
    EXPECT_EQ(folder.count(), 0);
}

TEST_F(Save, aFullDiskAtAnyPointLeavesTheOldFile)
{
    const std::string path = folder.put("file.pdf", PdfText().pages().stream(3, std::string(150000, 'x')));
    const auto opened = *Host::open(path);
    const std::string old = folder.get("file.pdf");
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit limit;
    ::getrlimit(RLIMIT_FSIZE, &limit);
    for (const rlim_t bytes : {0, 1, 65535, 65536, 131072, 150100}) {
        const struct rlimit tight = {bytes, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &tight);
        const auto saved = save(opened, path);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ASSERT_FALSE(saved) << bytes;
        EXPECT_EQ(saved.refusal().message, "can't be written: File too large");
        EXPECT_EQ(saved.refusal().reason, Reason::OutOfSpace);
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(folder.get("file.pdf") == old);
    EXPECT_EQ(folder.count(), 1);
}
