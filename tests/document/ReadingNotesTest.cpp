#include <tests/support/Documents.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

using Note = PDF::ReadingNote;

Ref<PDF::Document> shown(const std::string& file)
{
    return PDF::Document::create(make<ShowingStripe>(file));
}

// The notes as numbers, with their objects.
std::string textOf(const PDF::ReadingNotes& notes)
{
    std::string result;
    for (std::size_t kind = 0; kind < PDF::readingNoteCount; ++kind)
        if (const auto& entry = notes.of(Note(kind)); entry.count != 0)
            result += "kind " + std::to_string(kind) + " of object " + std::to_string(entry.id) + ", "
                + std::to_string(entry.count) + " times; ";
    return result;
}

std::string noted(Note kind, std::uint64_t count = 1, unsigned id = 3)
{
    PDF::ReadingNotes notes;
    for (; count != 0; --count)
        notes.add(kind, id, 0);
    return textOf(notes);
}

} // namespace

TEST(ReadingNotes, tellWhatTheFormatTakesApartOtherwise)
{
    const std::tuple<std::string, std::string> cases[] = { // the value of an object, and what is noted
        {"[ 3 (t) /N<41>[1]<< /K/V/L 1>><</K<41>>>(a\\\\b) (a\\134) 1 0 R 01 00 R % (c) 3(\n ]", ""},
        {"<< /A 1 >> % comment", ""},
        {"7 % endobj\n% comment", ""},
        {"<< /Length 4 >>\nstream\r\ndata\r\nendstream", ""},
        {"<< /Length 4 >>stream\rdataendstream", ""},
        {"<< /Length 4 >> stream\ndata\nendobj", ""},
        {"[ 3(t) ]", noted(Note::GluedWord)},
        {"[ 3[] 3<41> 3<</A 1>> ]", noted(Note::GluedWord, 3)},
        {"[ << /A 1 >>41> ]", noted(Note::GluedWord)},
        {"[ 5 < 41 /N ]", noted(Note::GluedWord)},
        {"12(text)", noted(Note::GluedWord)},
        {"[ <</A 1>><41> <</A 1>> ]", noted(Note::SkippedText, 4)},
        {"7 0 R", noted(Note::ObjectReference)},
        {"7 %\n0%\nR", noted(Note::SecondValue)},
        {"7 8", noted(Note::SecondValue)},
        {"(a) (b)", noted(Note::SecondValue)},
        {"(a) % comment\n12 0 obj 7", ""},
        {"(a) startxref 7", ""},
        {"(a) 12 obj", noted(Note::SecondValue)},
        {"[ 1 ] /A", noted(Note::SecondValue)},
        {"<< /A 1 >> << /B 2 >>", noted(Note::SecondValue)},
        {"<< /Length 1 >> % comment\nstream\nx\nendstream", noted(Note::LostStream)},
        {"<< /A << /B 1 /C 2 /B 3 /B 4 >> >>", noted(Note::RepeatedKey, 2)},
        {"[ (a\\\\) (b) (c) d) ]", noted(Note::StringEnd)},
        {"[ (a\\\\) (\\)b\\\\(c) ) ]", noted(Note::StringEnd)},
        {"[ (a\\\\(b) (c) ]", noted(Note::OpenString)},
        {"[ (a\\\\) % (b) )\n ]", noted(Note::OpenString)},
        {"<< /Length 6 >>\nstream  \n123\nendstream", noted(Note::StreamStart)},
        {"<< /Length 3 >>\nstr eam\n123\nendstream", noted(Note::StreamStart)},
        {"<< /Length 2 >>\nstream\n123\nendstream", noted(Note::StreamEnd)},
        {"<< /Length 1 0 R >>\nstream\n123\nendstream", ""},
        {"[ -1 0 R 1. 0 R +1 0 R ]", noted(Note::Reference, 3)},
        {"[ 1\x01" "2 ]", noted(Note::ControlCharacter)},
        {"\x01 7", noted(Note::ControlCharacter)},
        {"(a) \x01", noted(Note::SecondValue)},
        {"[ <4 1\n> <4x1> ]", noted(Note::HexCharacter)},
    };
    for (const auto& [value, expected] : cases) {
        const std::string file = PdfText().pages().object(3, value).object(4, "<< >>");
        const Ref<PDF::Document> document = shown(file);
        ASSERT_TRUE(document) << value;
        EXPECT_EQ(textOf(PDF::readingNotes(document)), expected) << value;
        const Ref<PDF::Document> hidden = open(file);
        ASSERT_TRUE(hidden);
        EXPECT_TRUE(expected != "" || PDF::readingNotes(hidden).isEmpty()) << value;
    }
}

TEST(ReadingNotes, ofHeadersAndTables)
{
    const auto file = [](const std::string& line, const std::string& table = "3 1\n9 0 n\n",
                          const std::string& rest = "") {
        return "%PDF-1.4\n" + line + "\nxref\n" + table + rest + "trailer\n<< /A 1 >>\nstartxref\n"
            + std::to_string(10 + line.size()) + "\n%%EOF";
    };
    const std::tuple<std::string, std::string> cases[] = {
        {file("3 0 obj 7 endobj"), ""},
        {file("3 0 obj 3 endobj"), ""},
        {file("3 0 obj 3 0 R endobj"), noted(Note::ObjectReference)},
        {file("003 0 obj 0 endobj"), noted(Note::HeaderValue)},
        {file("003 0 obj 03 endobj"), ""},
        {file("003 0 obj 03 4 endobj"), noted(Note::SecondValue)},
        {file("3 0 obj 7 endobj", "3 1\n9 0 n\n", "9 1\n0 0 f\n"), noted(Note::Subsection, 1, 0)},
        {file("3 0 obj 7 endobj", "3 1\n9 0 n\n", "trailer\n<< /B 1 >>\n"), noted(Note::OtherTrailer, 1, 0)},
        {file("3 0 obj 7 endobj", "3 1\n9 0 n\n", "% comment\n"), ""},
        {damaged(file("3 0 obj 7 endobj"), "/A 1", "/A 1 /A 2"), noted(Note::RepeatedKey, 1, 0)},
    };
    for (const auto& [text, expected] : cases) {
        const Ref<PDF::Document> document = shown(text);
        ASSERT_TRUE(document) << text;
        EXPECT_EQ(textOf(PDF::readingNotes(document)), expected) << text;
    }
    EXPECT_EQ(PDF::readingNotes(shown(file("3 0 obj 7 8 endobj"))).of(Note::SecondValue).offset, 19u);
}

TEST(ReadingNotes, lookingAheadIsBoundedByTheFile)
{
    // Each object is followed by all the others in one comment.
    std::string body = "%PDF-1.4\n";
    std::string table;
    constexpr int count = 4000;
    for (int id = 1; id <= count; ++id) {
        table += std::to_string(body.size()) + " 0 n\n";
        body += std::to_string(id) + " 0 obj 7 %";
    }
    body += "\n";
    const Ref<ShowingStripe> stripe = make<ShowingStripe>(body + "xref\n1 " + std::to_string(count) + "\n" + table
        + "trailer\n<< >>\nstartxref\n" + std::to_string(body.size()) + "\n%%EOF");
    ASSERT_TRUE(PDF::Document::create(stripe));
    EXPECT_LT(stripe->reads, 4 * stripe->size());
}
