#include <host/losses/Examine.h>
#include <host/losses/TableChain.h>
#include <host/saving/Save.h>

#include <tests/support/Streams.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

std::string shown(const Loss& loss)
{
    return std::to_string(loss.id) + " " + std::string(lossLabel(loss.kind)) + ": " + loss.inFile + " > "
        + loss.written;
}

// All losses of a file, one in a line.
std::string lossesOf(const std::string& file)
{
    const TestFolder folder;
    const auto examination = examine(folder.put("file.pdf", file));
    if (!examination)
        return "refused: " + examination.refusal().message;
    std::string text;
    for (const Loss& loss : examination->losses.all()) {
        const bool isValue = loss.kind < LossKind::Unwritable || loss.kind == LossKind::Comment;
        EXPECT_TRUE(!isValue || file.compare(loss.offset, loss.inFile.size(), loss.inFile) == 0) << shown(loss);
        text += shown(loss) + "\n";
    }
    return text;
}

PdfText with(const std::string& value)
{
    return PdfText().pages().object(3, value);
}

} // namespace

TEST(Examine, listsWhatGoesOutWithAnotherMeaning)
{
    const std::pair<PdfText, std::string> cases[] = {
        {with("[ 1.50 0.5 .5 -7.25 5. +3 -0 -0.0 007 1.0 ]"), ""},
        {with("<< /A#20B /C /D null /E [ 1 0 R ] /F true >>"), ""},
        {with("[ (a\\(b(c)\\)\\n\\101\\200\xA0\xFF) <48 65> () (\\\r\n) ]"), ""},
        {with("[ 1.05 -0.5 -.050 1.-5 (a\x80z) (\\201) (a\\\\nb) (a\\134nb) <5> ]"), ""},
        {with("[ 1[2]3 [ 12(x) ] 4 << /A -1 0 R /A<4G> >> ]"), ""},
        {with("12(x) "), "3 word glued to a bracket: 12 > (x)\n"},
        {with("<< %[ 1.05\n/A (%) %b\n>> % endobj"),
            "3 comment: %[ 1.05 > \n3 comment: %b > \n3 comment: % endobj > \n"},
        {with("1 0 R"), "3 reference as an object: 1 0 R > 1\n"},
        {with("[ 1 ] (" + std::string(40, 'x') + ")"), "3 other value: (" + std::string(39, 'x') + " > \n"},
        {with("<< /A 1 /A 2 /B [ " + std::string(1 << 20, ' ') + " ] >>"), "3 repeated key: 1 > \n"},
        {with("%x<</A 1>>\n<</B 2>>"), "3 comment: %x<</A 1>> > \n3 other value:  > 1\n3 other value: 2 > \n"},
        {with("<< /A /B\x01 2 >>"), "refused: an object can't be read, or is not a dictionary where one is needed"},
    };
    for (const auto& [file, losses] : cases)
        EXPECT_EQ(lossesOf(file), losses) << std::string(file);
}

TEST(Examine, looksAtHeaderLines)
{
    const std::pair<std::string, std::string> cases[] = {
        {"3 0 obj 3", ""}, // found early, and the same there
        {"3 0 obj [ 3 0 ]", ""},
        {"003 0 obj 0", "3 value found too early: 0 > 003\n"},
        {"3 0 obj 0 3 R", "3 reference as an object: 0 3 R > 0\n"},
    };
    const std::string value(16, '9');
    for (auto [header, losses] : cases) {
        header.resize(24, ' ');
        EXPECT_EQ(lossesOf(damaged(with(value), "3 0 obj\n" + value, header)), losses) << header;
    }
}

TEST(Examine, looksAtTheDataOfStreams)
{
    const std::pair<std::string, std::string> cases[] = {
        {"<< /Length 4 >> stream\ndata\nendstream", ""},
        {"<< /Length 4 >>stream\r\ndata endstream % x", "3 comment: % x > \n"},
        {"<< /Length 5 >> stream\n(\x80%)\nendstream", ""},
        {"<< /Length 9999 >> stream\ndata\nendstream", "3 object that can't be written: /Length 9999 > \n"},
        {"<< /Length 2 >> stream\ndata\nendstream",
            "3 data of a stream: ta\nendstream\nendobj\nxref\n0 4\n0000000000  > \n"},
        {"<< /Length 4 >> stream \ndata\nendstream",
            "3 data of a stream: data\nendstream\nendobj\nxref\n0 4\n000000000 > \n"},
        {"<< /Length 4 >> %c\nstream\ndata\nendstream",
            "3 comment: %c > \n3 data of a stream:  %c\nstream\ndata\nendstream\nendobj\nxref\n0  > \n"},
        {"<< /Type /ObjStm /N 2 /Length 0 >> stream\nendstream", ""}, // nothing leads to the objects in it
        {"<< /Length 4 >> stream\ndata endstreamendobj", ""},
        {"<< /Length 4 >> stream\ndata\nendobj 4 0 obj", ""},
    };
    for (const auto& [value, losses] : cases)
        EXPECT_EQ(lossesOf(with(value)), losses) << value;
    for (const char* rest : {"\x0b\nendstream", " endstreamer endstream", " endobj BT endstream"})
        EXPECT_EQ(lossesOf(with(std::string("<< /Length 4 >> stream\ndata") + rest)).substr(0, 21 + std::strlen(rest)),
            std::string("3 data of a stream: ") + rest + "\n");
    EXPECT_EQ(lossesOf(PdfText("\r").pages().object(3, "<< /Length 5 >> stream\r\n\ndata\rendstream")), "");
}

TEST(Examine, looksAtTheTableAndTheTrailer)
{
    const std::pair<std::string, std::string> cases[] = {
        {with("1").object(5, "2"), ""},
        {with("[ 9 0 R ]"), ""}, // leads nowhere in the file, either
        {damaged(with("[ 4 0 R ]"), "trailer", "4 1\n0000000009 00000 n\ntrailer"), ""}, // nor does this
        {damaged(with("1"), "trailer", "%r\ntrailer"), "0 comment: %r > \n"},
        {with("1").trailer("/ID [ (\\74\\74) <5> ] /Size 9"), ""},
        {with("1").trailer("/Prev null /Encrypt null /XRefStm null"), ""},
        {with("1").trailer("/Pr#65v 9"), "0 earlier revision: /Prev 9 > /Prev 9\n"},
        {with("<< /Type /Obj#53tm /N 2 /Length 0 >> stream\nendstream").trailer("/XRefStm 9"),
            "3 objects in streams: << /Type /Obj#53tm /N 2 /Length 0 >> > \n"
            "0 objects in streams: /XRefStm 9 > /XRefStm 9\n"},
        {with("1").trailer("/Encrypt 3 0 R"), "0 encryption: /Encrypt 3 0 R > /Encrypt 3 0 R\n"},
        {with("[ 9 0 R ]").trailer("/XRefStm 9"),
            "3 reference to a lost object: 9 0 R > 9 0 R\n0 objects in streams: /XRefStm 9 > /XRefStm 9\n"},
        {with("1").trailer("/Prev 9"), "0 earlier revision: /Prev 9 > /Prev 9\n"},
        {damaged(with("1"), "R  >>", "R %c\n>>% d"), "0 comment: %c > \n0 comment: % d > \n"},
    };
    for (const auto& [file, losses] : cases)
        EXPECT_EQ(lossesOf(file), losses) << file;
}

TEST(Examine, findsWhatEarlierRevisionsHave)
{
    std::string file = with("(old)").object(4, "4").object(5, "5");
    const std::size_t old = file.find("xref\n0 6");
    const std::size_t third = file.size();
    file += "3 0 obj\n[ 4 0 R 6 0 R 7 0 R ]\nendobj\n";
    const std::size_t sixth = file.size();
    file += "6 0 obj\n(new)\nendobj\n";
    const std::string start = std::to_string(file.size());
    file += "xref\n3 1\n" + std::to_string(third) + " 0 n\n5 2\n0 1 f\n" + std::to_string(sixth) + " 0 n\n";
    file += "trailer\n<< /Root 1 0 R /Prev " + std::to_string(old) + " >>\nstartxref\n" + start + "\n%%EOF\n";
    EXPECT_EQ(lossesOf(file),
        "3 reference to a lost object: 4 0 R > 4 0 R\n"
        "3 reference to a lost object: 6 0 R > 6 0 R\n"
        "0 earlier revision: /Prev " + std::to_string(old) + " > /Prev " + std::to_string(old) + "\n"
        "0 reference to a lost object: 1 0 R > 1 0 R\n"
        "1 earlier revision: " + file.substr(file.find("1 0 obj"), 200) + " > \n"
        "2 earlier revision: " + file.substr(file.find("2 0 obj"), 200) + " > \n"
        "4 earlier revision: " + file.substr(file.find("4 0 obj"), 200) + " > \n"
        "6 object of a second subsection: " + file.substr(sixth, 200) + " > \n");
}

TEST(Examine, tellsTheSizeAndWhetherThereIsATable)
{
    const TestFolder folder;
    const std::string path = folder.put("file.pdf", with("[ 1.05 ] 2").stream(7, "data"));
    const auto examination = examine(path);
    ASSERT_TRUE(examination);
    EXPECT_EQ(examination->tableProblem, "");
    EXPECT_EQ(examination->losses.summary(), "other value (1)");
    EXPECT_EQ(examination->size, save(*Host::open(path), folder.path("out.pdf"), {.isLossyAllowed = true})->size);
    EXPECT_EQ(examine(folder.put("file.pdf", with("<< /Length 99999 >> stream\nx")))->size, 0u);
    const auto far = examine(folder.put("file.pdf",
        "%PDF-1.4\n900000 0 obj\n(x)\nendobj\nxref\n900000 1\n9 0 n\ntrailer\n<< >>\nstartxref\n33\n%%EOF"));
    EXPECT_EQ(far->tableProblem, "the object numbers leave gaps that are too large for a table");
    EXPECT_EQ(far->size, 0u);
}

TEST(Examine, refusesWhatCantBeRead)
{
    const TestFolder folder;
    EXPECT_EQ(examine(folder.path("none.pdf")).refusal().reason, Reason::Unreadable);
    EXPECT_EQ(examine(folder.put("file.pdf", "%PDF-1.4\n")).refusal().code, ErrNoEofMarker);
    const auto file = *FileStripe::open(folder.put("file.pdf", with("1")));
    fs::resize_file(folder.path("file.pdf"), 20);
    EXPECT_FALSE(examine(file));
    EXPECT_EQ(examine(Ref<FileStripe>()).refusal().code, ErrNullArgument);
}

// Tables that lie in the trailers of each other, and objects that by the format go on to the end of the file,
// where the library takes a few characters.
TEST(Examine, takesTimeThatGrowsWithTheFile)
{
    constexpr unsigned count = 5'000;
    const auto tablesAt = [](std::size_t begin) {
        std::string chain, ends;
        for (unsigned i = 0; i < count; ++i, ends += ")>>") {
            const std::string next = std::to_string(10'000'000 + begin + (i + 1) * 35);
            chain += "xref 0 0 trailer<</Prev " + ("0" + next.substr(1)) + "/A(";
        }
        return std::string(PdfText().pages().stream(3, chain + ends).trailer("/Prev " + std::to_string(begin)));
    };
    const std::size_t begin = tablesAt(0).find("xref");
    const std::string tables = tablesAt(begin);
    const TestFolder folder;
    const std::string path = folder.put("file.pdf", tables);
    SourceText text(*FileStripe::open(path));
    EXPECT_FALSE(TableChain(text).isWhole());
    EXPECT_LT(text.bytesRead(), 18 * tables.size());
    EXPECT_EQ(examine(path)->losses.count(LossKind::EarlierRevision), 1u);

    PdfText objects = PdfText().pages();
    PdfText small = PdfText().pages();
    for (unsigned id = 3; id < count; ++id) {
        objects.object(id, "%<<>> endobj\n(");
        small.stream(id, "");
    }
    EXPECT_EQ(lossesOf(small), "");
    const char* const refused = "refused: has objects that overlap too often to be examined";
    EXPECT_EQ(lossesOf(objects), refused);

    const std::string blanks = with("1" + std::string(100'000, ' '));
    std::string rows = "10 99\n";
    for (int i = 0; i < 99; ++i)
        rows += std::to_string(blanks.find("    ")) + " 0 n\n";
    EXPECT_EQ(lossesOf(damaged(blanks, "trailer", rows + "trailer")), refused);
}
