// Tries the library on a folder of real files: files-pdf-corpus FOLDER EXPECT.TSV
//
// The table has a header line and, for each file, its name, what opening gives ("ok" or the code), the
// numbers of objects and of pages, and what a rewrite gives: "ok", with ",cr" or ",backslash" behind it, or
// words that say why the file can't be saved whole ("shifted", "noroot", "badlen", "dangling", "prev").

#include <document/Inspection.h>
#include <host/ErrorWords.h>
#include <host/Open.h>
#include <host/Save.h>
#include <values/Object.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using namespace Libraries::Files;
namespace fs = std::filesystem;

struct Row {
    std::string file, opening, objects, pages, rewrite;
    bool says(const char* word) const { return rewrite.find(word) != rewrite.npos; }
};

// What is wrong with a file; empty when nothing is.
using Complaint = std::string;

std::vector<Row> readTable(const std::string& path)
{
    std::vector<Row> rows;
    std::ifstream table(path);
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) {
        std::istringstream cells(line);
        Row row;
        for (std::string* cell : {&row.file, &row.opening, &row.objects, &row.pages, &row.rewrite})
            std::getline(cells, *cell, '\t');
        rows.push_back(row);
    }
    return rows;
}

std::string bytesOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string describe(const Host::Refusal& refusal)
{
    return refusal.words + " (" + Host::codeText(refusal.code) + ")";
}

// The written text of each object, and its numbers.
std::vector<std::u32string> textsOf(const Ref<PDF::Document>& document)
{
    std::vector<std::u32string> texts;
    for (const auto& object : PDF::objectsOf(document)) {
        const auto text = PDF::writtenText(document, object->value());
        texts.push_back({char32_t(object->id()), char32_t(object->generation())});
        if (text)
            texts.back().append(text->data(), text->data() + text->size());
    }
    return texts;
}

// A folder for what is written, which goes with all that is in it.
class Scratch {
public:
    Scratch()
    {
        std::string name = fs::temp_directory_path() / "files-pdf-corpus-XXXXXX";
        if (::mkdtemp(name.data()))
            _folder = name;
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { fs::remove_all(_folder); }
    fs::path file(const char* name) const { return _folder / name; }
    bool isThere() const { return !_folder.empty(); }

private:
    fs::path _folder;
};

// The file is saved as it is, opened again, and saved once more.
Complaint checkRewrite(const Row& row, const Host::OpenedFile& opened, const Scratch& scratch)
{
    Host::SaveOptions unverified;
    unverified.isUnverified = true;
    const auto first = Host::save(opened, scratch.file("first.pdf"), unverified);
    if (!first)
        return "is not rewritten: " + describe(first.refusal());
    if (row.says("backslash"))
        return {};
    auto again = Host::open(scratch.file("first.pdf"));
    if (!again)
        return "does not open after a rewrite: " + describe(again.refusal());
    if (textsOf(again->document) != textsOf(opened.document))
        return "has other texts after a rewrite";
    const auto second = Host::save(*again, scratch.file("second.pdf"), unverified);
    if (!second)
        return "is not rewritten twice: " + describe(second.refusal());
    if (bytesOf(scratch.file("first.pdf")) != bytesOf(scratch.file("second.pdf")))
        return "is rewritten otherwise the second time";
    return {};
}

// Whether a refused saving names the reason that the table gives.
bool isReason(const Row& row, const Host::Refusal& refusal)
{
    const auto has = [&refusal](const char* words) { return refusal.words.find(words) != std::string::npos; };
    if (row.says("prev"))
        return has("(Prev)");
    if (row.says("noroot"))
        return has("no catalog") || has("(Prev)");
    if (row.says("badlen"))
        return refusal.code == ErrWriteObject && has("object ");
    if (row.says("shifted"))
        return has("object ") && has(" row ");
    return row.says("backslash") && has("object ") && has("backslash");
}

// The verified saving takes what the table calls good, and refuses everything else for that reason.
Complaint checkVerifiedSave(const Row& row, const Host::OpenedFile& opened, const Scratch& scratch)
{
    const bool isGood = row.rewrite == "ok" || row.rewrite == "ok,cr";
    const fs::path target = scratch.file("verified.pdf");
    const auto saved = Host::save(opened, target);
    if (isGood)
        return saved ? Complaint() : "is not saved: " + describe(saved.refusal());
    if (saved)
        return "is saved, but should be refused";
    if (!isReason(row, saved.refusal()))
        return "is refused for another reason: " + describe(saved.refusal());
    return fs::exists(target) ? "is refused, but leaves a file" : Complaint();
}

Complaint check(const Row& row, const fs::path& folder)
{
    const Scratch scratch;
    auto opened = Host::open(folder / row.file);
    const std::string opening = opened ? "ok" : Host::codeText(opened.refusal().code);
    if (!scratch.isThere())
        return "can't be tried without a folder for temporary files";
    if (opening != row.opening)
        return "opens with " + opening + " instead of " + row.opening;
    if (!opened)
        return {};
    const std::string objects = std::to_string(PDF::objectsOf(opened->document).size());
    const std::string pages = std::to_string(opened->document->getPages().size());
    if (objects != row.objects || pages != row.pages)
        return "has " + objects + " objects and " + pages + " pages";
    const bool isWritten = row.rewrite.substr(0, 2) == "ok";
    const Complaint complaint = isWritten ? checkRewrite(row, *opened, scratch) : Complaint();
    return complaint.empty() ? checkVerifiedSave(row, *opened, scratch) : complaint;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: files-pdf-corpus FOLDER EXPECT.TSV\n");
        return 2;
    }
    const std::vector<Row> rows = readTable(argv[2]);
    unsigned failed = 0;
    for (const Row& row : rows) {
        const Complaint complaint = check(row, argv[1]);
        failed += !complaint.empty();
        std::printf("%s %s%s%s\n", complaint.empty() ? "pass" : "FAIL", row.file.c_str(), complaint.empty() ? "" : ": ",
            complaint.c_str());
    }
    std::printf("%zu passed, %u failed\n", rows.size() - failed, failed);
    return failed || rows.empty();
}
