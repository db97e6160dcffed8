#include <host/files/FileStructure.h>

#include <tests/support/Documents.h>
#include <tests/support/PackedText.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

std::string wordsOf(const std::string& file)
{
    const TestFolder folder;
    const auto opened = Host::FileStripe::open(folder.put("in.pdf", file));
    return Host::structureWords(Host::findStructure(**opened));
}

// The file with an update after it: a table of one row, and a trailer.
std::string updated(const std::string& file, const std::string& entries)
{
    return file + "xref\n1 1\n0000000009 00000 n \ntrailer\n<< /Root 1 0 R " + entries + " >>\nstartxref\n"
        + std::to_string(file.size()) + "\n%%EOF\n";
}

} // namespace

TEST(FileStructure, tellsWhatAFileIs)
{
    const std::string plain = PdfText().pages().object(3, "(trailer)");
    const std::string packed = PackedText().pages();
    const std::string shortRows = PdfText("\r").pages();
    const std::string previous = "/Prev " + std::to_string(plain.find("xref\n"));
    const auto inStream = [](const std::string& key) {
        return std::string(PackedText().object(1, "<< /Type /Catalog >>").trailer(key + " 2 0 R"));
    };
    const std::pair<std::string, const char*> files[] = {
        {plain, ""},
        {shortRows, ""},
        {"", ""},
        {"no PDF file", ""},
        {damaged(plain, "startxref", "startwhat"), ""},
        {damaged(plain, "trailer\n<<", "trailer <<"), "trailer and its dictionary on one line"},
        {"junk\n" + plain, "something before the header"},
        {PdfText().pages().trailer("/Encrypt 3 0 R /A [ << /Prev 1 >> ]"), "encrypted"},
        {PdfText().pages().trailer("/Encrypt null"), ""},
        {PdfText().pages().trailer("/Encr#79pt << /V (>>) >> /Size 3"), "encrypted"},
        {updated(plain, previous), "several tables"},
        {updated(plain, "/Prev 1"), ""},
        {updated(plain, "/Prev " + std::to_string(plain.size())), ""}, // itself
        {updated(plain, "/XRefStm 9"), "cross-reference streams"},
        {damaged(plain, "trailer\n", "7 1\n0000000009 00000 n \ntrailer\n"), "a table of several subsections"},
        {damaged(shortRows, "trailer\r", "7 1\r0000000009 00000 n\rtrailer\r"), "a table of several subsections"},
        {packed, "cross-reference streams, object streams"},
        {inStream("/Info"), "cross-reference streams"},
        {inStream("/Encrypt"), "cross-reference streams, encrypted"},
        {packed.substr(0, packed.size() - 7), "cross-reference streams, object streams"},
    };
    for (const auto& [file, words] : files)
        EXPECT_EQ(wordsOf(file), words) << file.substr(file.size() - std::min<std::size_t>(file.size(), 300));
}
