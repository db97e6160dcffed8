#include <document/ExactWriting.h>

#include <tests/support/Pages.h>
#include <tests/support/Streams.h>

#include <gtest/gtest.h>

#include <values/Exact.h>

using namespace Tests;

namespace {

std::string writtenExactly(const Ref<PDF::Document>& document, const PDF::ExactOptions& options = {})
{
    const Ref<TestStripe> out = make<TestStripe>("");
    const bool isWritten = document && PDF::writeExactly(document, out, options);
    return isWritten ? out->bytes() : "(failed)";
}

// The part of a written file from the table on.
std::string tableOf(const std::string& file)
{
    const std::size_t table = file.rfind("\nxref\n") + 6;
    return file.substr(table, file.find("trailer", table) - table);
}

std::string trailerOf(const std::string& file)
{
    const std::size_t trailer = file.rfind("trailer") + 8;
    return file.substr(trailer, file.find("startxref", trailer) - 1 - trailer);
}

void expectSame(const Ref<PDF::Document>& before, const Ref<PDF::Document>& after)
{
    const auto written = PDF::objectsAsWritten(before);
    const auto read = PDF::objectsAsWritten(after);
    ASSERT_EQ(written.size(), read.size());
    for (std::size_t i = 0; i < written.size(); ++i) {
        EXPECT_EQ(plain(written[i]->asText()), plain(read[i]->asText()));
        EXPECT_TRUE(PDF::isSameExactly(written[i]->value(), read[i]->value())) << plain(written[i]->asText());
        if (const Ref<PDF::Stream> stream = PDF::valueAs<PDF::Stream>(written[i]->value())) {
            EXPECT_EQ(bytesOf(before->streamData(stream, false)),
                bytesOf(after->streamData(read[i]->valueAsStream(), false)));
        }
    }
}

} // namespace

TEST(ExactWriting, theFileSaysWhatItsSourceSaid)
{
    const std::string values
        = "[ 1.05 -0.5 .50 +1 5. 007 1.-5 -0 (a\\\\b) (\x80\x81) (\\201) (a\\134b) <485> <9> /A#20B ]";
    for (const std::string ending : {"\n", "\r", "\r\n"}) {
        const Ref<PDF::Document> document
            = open(PdfText(ending).pages().object(3, values).stream(4, "_data").stream(5, ""));
        objectOf(document, 4)->value().cast<PDF::StreamObj>()->strmData(make<TestStripe>("\ndata"));
        const std::string file = writtenExactly(document);
        const std::string afterKeyword = ending == "\r" ? "\r\n" : ending;
        EXPECT_EQ(file.find("%PDF-1.7" + ending + "%\xE2\xE3\xCF\xD3" + ending + "1 0 obj" + ending), 0u);
        EXPECT_NE(file.find("3 0 obj" + ending + values + ending), file.npos) << file;
        EXPECT_NE(file.find("stream" + afterKeyword + "\ndata" + ending + "endstream"), file.npos) << file;
        EXPECT_NE(file.find("stream" + afterKeyword + "endstream"), file.npos) << file;
        const Ref<PDF::Document> again = open(file);
        ASSERT_TRUE(again);
        expectSame(document, again);
        EXPECT_EQ(writtenExactly(document), file);
        EXPECT_EQ(writtenExactly(again), file);
    }
}

TEST(ExactWriting, theTableFitsTheIds)
{
    const std::string start = "%PDF-1.4\n1 0 obj\n1\nendobj\n5 2 obj\n5\nendobj\n";
    const auto file = [&start](const std::string& table) {
        return start + "xref\n" + table + "trailer\n<< /Size 99 >>\nstartxref\n" + std::to_string(start.size())
            + "\n%%EOF";
    };
    const std::string one = "0000000015 00000 n \n";
    const std::string five = "0000000032 00002 n \n";
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = { // rule, table, its new one, Size
        {"gaps are linked free rows", "0 6\n0 65535 f\n9 0 n\n0 0 f\n0 0 f\n0 0 f\n26 2 n\n",
            "0 6\n0000000002 65535 f \n" + one + "0000000003 00000 f \n0000000004 00000 f \n0000000000 00000 f \n"
                + five,
            "6"},
        {"generations stay, those of rows at the end too",
            "0 8\n9 7 f\n9 0 n\n0 1 f\n0 65535 f\n0 0 f\n26 2 n\n0 4 f\n0 0 f\n",
            "0 8\n0000000002 00007 f \n" + one + "0000000003 00001 f \n0000000004 65535 f \n0000000006 00000 f \n"
                + five + "0000000007 00004 f \n0000000000 00000 f \n",
            "8"},
        {"a table begins at 0", "5 1\n26 2 n\n",
            "0 6\n0000000001 65535 f \n0000000002 00000 f \n0000000003 00000 f \n0000000004 00000 f \n"
            "0000000000 00000 f \n0000000015 00002 n \n", "6"},
        {"without objects, too", "0 0\n", "0 1\n0000000000 65535 f \n", "1"},
    };
    for (const auto& [rule, table, expected, size] : cases) {
        const Ref<PDF::Document> document = open(file(table));
        const std::string plainBefore = written(document);
        const std::string exact = writtenExactly(document);
        EXPECT_EQ(tableOf(exact), expected) << rule;
        EXPECT_EQ(trailerOf(exact), "<< /Size " + size + " >>") << rule;
        EXPECT_EQ(written(document), plainBefore) << rule << ": the document stays";
        const Ref<PDF::Document> again = open(exact);
        ASSERT_TRUE(again) << rule;
        expectSame(document, again);
        EXPECT_EQ(writtenExactly(again), exact) << rule;
    }
    // An object with the id 0 has its row, as in its source.
    const std::string zero
        = "%PDF-1.4\n0 0 obj\n1\nendobj\nxref\n0 2\n9 0 n\n0 3 f\ntrailer\n<< >>\nstartxref\n26\n%%EOF";
    EXPECT_EQ(tableOf(writtenExactly(open(zero))), "0 2\n0000000015 00000 n \n0000000000 00003 f \n");
}

TEST(ExactWriting, gapsEndAtTheSizeOfTheirTable)
{
    const auto file = [](const std::string& id) {
        return open("%PDF-1.4\n" + id + " 0 obj\n1\nendobj\nxref\n" + id + " 1\n9 0 n\ntrailer\n<< >>\nstartxref\n"
            + std::to_string(25 + id.size()) + "\n%%EOF");
    };
    EXPECT_EQ(writtenExactly(file("52428")).size(), 52429 * 20u + 94);
    LogCapture log;
    for (const char* id : {"52429", "4000000000", "4294967295"}) {
        const Ref<TestStripe> out = make<TestStripe>("");
        EXPECT_EQ(codeOf(PDF::writeExactly(file(id), out)), ErrOutOfRange) << id;
        EXPECT_EQ(out->bytes(), "");
    }
    EXPECT_EQ(log.take().front(), "Ids leave too large gaps for a table; rows: CCCEh (52430)");
}

TEST(ExactWriting, theSecondPartOfTheIdComesFromTheContent)
{
    const auto file = [](const std::string& id, const std::string& data) {
        return open(PdfText().pages().stream(3, data).trailer("/ID " + id));
    };
    const auto idOf = [](const std::string& bytes) {
        const std::string trailer = trailerOf(bytes);
        return trailer.substr(7, trailer.find(" /Root") - 7);
    };
    const Ref<PDF::Document> document = file("[ (one) <02> ]", "data");
    const std::string first = writtenExactly(document);
    EXPECT_EQ(idOf(first).substr(0, 9), "[ (one) <");
    EXPECT_EQ(idOf(first).size(), std::string("[ (one) <").size() + 32 + std::string("> ]").size());
    EXPECT_EQ(writtenExactly(open(first)), first) << "the trailer doesn't count";
    EXPECT_EQ(plain(document->trailer()->find(text("ID"))->asText()), "[one02 ]");
    EXPECT_NE(idOf(writtenExactly(file("[ (one) <02> ]", "date"))), idOf(first));
    EXPECT_EQ(idOf(writtenExactly(document, {.isIdKept = true})), "[ (one) <02> ]");
    for (const std::string unusable : {"[ (one) ]", "[ (one) 2 ]", "(one)", "7 0 R"})
        EXPECT_EQ(idOf(writtenExactly(file(unusable, "data"))), unusable);
}

TEST(ExactWriting, stringsOfApplicationsAreReadTheSameByAll)
{
    const Ref<PDF::Document> document = open(PdfText().pages());
    const Ref<PDF::Value> string = make<PDF::StringObj>(::String::create(U"a\\b>>\\\\<<\u0081"));
    document->trailer()->set(text("Info"), string);
    objectOf(document, 1)->valueAsDictionary()->set(text("Info"), string);
    const std::string file = writtenExactly(document);
    EXPECT_NE(file.find("/Info (a\\134b>>\\134\\134<<\\201) /Pages"), file.npos) << file;
    EXPECT_NE(trailerOf(file).find("(a\\134b\\076\\076\\134\\134\\074\\074\\201)"), file.npos) << file;
    const Ref<PDF::Document> again = open(file);
    ASSERT_TRUE(again);
    expectSame(document, again);
    EXPECT_TRUE(PDF::isSameExactly(again->trailer()->find(text("Info")), string));
}

TEST(ExactWriting, sourcesInTheTrailerHaveNoAngleBrackets)
{
    const std::pair<std::string, std::string> cases[] = { // values of a trailer that can be read, as they are written
        {"(\\\\n<<>>\\7<)", "(\\\\n\\074\\074\\076\\076\\7\\074)"},
        {"(a\\\\) <<>> (b) c)", "(a\\\\) <<>> (b) c)"}, // the format has them outside of a string
        {"(a\\\\((<b<) >)", "(a\\\\((\\074b\\074) \\076)"},
        {"[ (\x80<<) << /A (\x80>>) >> ]", "[ (\x80\\074\\074) << /A (\x80\\076\\076) >> ]"},
    };
    for (const auto& [value, expected] : cases) {
        const Ref<PDF::Document> document = open(PdfText().pages().trailer("/Info " + value));
        ASSERT_TRUE(document) << value;
        const std::string file = writtenExactly(document);
        EXPECT_NE(trailerOf(file).find("/Info " + expected + " /Root"), std::string::npos) << trailerOf(file);
        const Ref<PDF::Document> again = open(file);
        ASSERT_TRUE(again) << value;
        EXPECT_TRUE(PDF::isSameExactly(document->trailer()->find(text("Info")), again->trailer()->find(text("Info"))));
        EXPECT_EQ(writtenExactly(again), file);
    }
}

TEST(ExactWriting, refusesWithTheCodesOfWrite)
{
    const Ref<PDF::Document> document = open(PdfText().pages().trailer("/ID [ (a) (b) ]"));
    const auto isEnded = [&document](Fault fault) {
        const Ref<TestStripe> out = make<TestStripe>("", fault);
        const auto trailer = PDF::writeExactly(document, out);
        EXPECT_EQ(!trailer, out->hasFailed);
        return out->hasFailed;
    };
    failOneByOne(&Fault::write, 0, isEnded);
    EXPECT_EQ(codeOf(PDF::writeExactly(nullptr, make<TestStripe>(""))), ErrNullArgument);
    EXPECT_EQ(codeOf(PDF::writeExactly(document, narrow(""))), ErrInvalidArgument);
}
