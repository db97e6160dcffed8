// Tries the library on a folder of real files: files-pdf-corpus FOLDER EXPECT.TSV
//
// The table has a header line and, for each file, its name, what opening gives ("ok" or the code), the
// numbers of objects and of pages, and what a rewrite gives: "ok" with or without words after it, or words that say
// why the file can't be saved whole ("noroot", "badlen", "dangling", "prev"). The last column has "glued" with a count
// where words are joined, and "misfind" where a value is found too early, which may be the right one. Other words
// there, and "shifted", say what a plain rewrite alone would lose.

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/files/Open.h>
#include <host/losses/Examine.h>
#include <host/saving/Save.h>
#include <values/Object.h>

#include <tests/support/TestFolder.h>

#include <cstdio>
#include <set>
#include <sstream>

namespace {

using namespace Tests;

struct Row {
    std::string file, opening, objects, pages, rewrite, notKept;
    bool says(const char* word) const { return rewrite.find(word) != rewrite.npos; }
    // The number after a word of the columns about saving; 0 without the word.
    std::size_t count(const std::string& word) const
    {
        const std::string text = rewrite + " " + notKept;
        const std::size_t place = text.find(word);
        return place == text.npos ? 0 : std::strtoul(text.c_str() + place + word.size(), nullptr, 10);
    }
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
        for (std::string* cell : {&row.file, &row.opening, &row.objects, &row.pages, &row.rewrite, &row.notKept})
            std::getline(cells, *cell, '\t');
        rows.push_back(row);
    }
    return rows;
}

std::string describe(const Host::Refusal& refusal)
{
    return refusal.message + " (" + Host::codeText(refusal.code) + ")";
}

// Whether a refused saving names the reason that the table gives.
bool isReason(const Row& row, const Host::Refusal& refusal)
{
    const auto has = [&refusal](const char* words) { return refusal.message.find(words) != std::string::npos; };
    if (row.says("prev"))
        return refusal.reason == Host::Reason::Partial;
    if (row.says("noroot"))
        return refusal.reason == Host::Reason::BrokenRule || refusal.reason == Host::Reason::Partial;
    return row.says("badlen") && refusal.reason == Host::Reason::Unwritable && refusal.code == ErrWriteObject
        && has("object ");
}

// The numbers of objects and of pages, as the table has them.
std::string numbersOf(const Host::OpenedFile& opened)
{
    return std::to_string(Host::PDF::objectsOf(opened.document).size()) + " objects and "
        + std::to_string(opened.document->getPages().size()) + " pages";
}

// The file is saved, which compares what was written, opened again, and saved once more.
Complaint checkRewrite(const Host::OpenedFile& opened, const TestFolder& folder)
{
    const auto first = Host::save(opened, folder.path("first.pdf"));
    if (!first)
        return "is not saved: " + describe(first.refusal());
    const auto again = Host::open(folder.path("first.pdf"));
    if (!again || numbersOf(*again) != numbersOf(opened))
        return again ? "has other numbers after a rewrite" : "does not open again: " + describe(again.refusal());
    const auto second = Host::save(*again, folder.path("second.pdf"));
    if (!second)
        return "is not saved twice: " + describe(second.refusal());
    return folder.get("first.pdf") == folder.get("second.pdf") ? "" : "is rewritten otherwise the second time";
}

// What can't be saved whole is refused for the reason that the table gives. If the table says that it can be
// written all the same, an unverified saving does.
Complaint checkRefusal(const Row& row, const Host::OpenedFile& opened, const TestFolder& folder)
{
    const auto saved = Host::save(opened, folder.path("refused.pdf"));
    if (saved || folder.count() != 0)
        return saved ? "is saved, but should be refused" : "is refused, but leaves a file";
    if (!isReason(row, saved.refusal()))
        return "is refused for another reason: " + describe(saved.refusal());
    const bool isWritten = !row.says("ok") || Host::save(opened, folder.path("written.pdf"), {.isUnverified = true});
    return isWritten ? "" : "is not written unverified";
}

// Whether the losses that are found are those that the table tells.
Complaint checkLosses(const Row& row, const std::string& path, const TestFolder& folder)
{
    using Host::LossKind;
    const auto examination = Host::examine(path);
    if (!examination)
        return "is not examined: " + describe(examination.refusal());
    const Host::Losses& losses = examination->losses;
    std::set<std::string> lostTargets;
    for (const Host::Loss& loss : losses.all())
        if (loss.kind == LossKind::LostReference)
            lostTargets.insert(loss.inFile);
    const bool isAgreed = losses.count(LossKind::GluedWord) == row.count("glued")
        && lostTargets.size() == row.count("dangling")
        && losses.count(LossKind::EarlyValue) <= (row.notKept == "misfind") && examination->tableProblem.empty()
        && row.says("badlen") == (losses.count(LossKind::Unwritable) > 0);
    const bool isExplained = row.says("prev") || row.says("noroot") || row.says("badlen");
    if (!isAgreed || (!isExplained && losses.countOfMeaning() != losses.count(LossKind::GluedWord)))
        return "has other losses: " + losses.summary();
    const Host::SaveOptions unchecked{.isPartialAllowed = true, .isUnverified = true};
    const auto saved = Host::save(*Host::open(path), folder.path("sized.pdf"), unchecked);
    return (saved ? saved->size : 0) == examination->size ? "" : "has another size than examined";
}

Complaint check(const Row& row, const std::string& folder)
{
    const auto opened = Host::open(folder + "/" + row.file);
    const std::string opening = opened ? "ok" : Host::codeText(opened.refusal().code);
    if (opening != row.opening)
        return "opens with " + opening + " instead of " + row.opening;
    if (!opened)
        return {};
    if (numbersOf(*opened) != row.objects + " objects and " + row.pages + " pages")
        return "has " + numbersOf(*opened);
    const TestFolder scratch;
    const bool isGood = !row.says("noroot") && !row.says("badlen") && !row.says("prev");
    const Complaint complaint = isGood ? checkRewrite(*opened, scratch) : checkRefusal(row, *opened, scratch);
    return complaint.empty() ? checkLosses(row, folder + "/" + row.file, scratch) : complaint;
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
