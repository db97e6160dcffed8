#pragma once

#include <document/Document.h>
#include <host/losses/Losses.h>
#include <host/losses/TableChain.h>

#include <map>
#include <set>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A file under examination: its text, and the document that the library made of it.
class FileExamination {
public:
    FileExamination(Ref<PDF::Document> document, Ref<FileStripe> file) noexcept;

    const Ref<PDF::Document>& document() const noexcept { return _document; }
    SourceText& text() noexcept { return _text; }
    const TableChain& chain() const noexcept { return _chain; }
    Losses& losses() noexcept { return _losses; }

    // What is listed from then on is in this object, or not in any.
    void setObject(const PDF::Object& object) noexcept;
    void clearObject() noexcept { _template = {}; }
    // A loss in that object, without kind, place and texts.
    const Loss& lossTemplate() const noexcept { return _template; }
    void add(LossKind kind, std::uint64_t offset, std::string inFile, std::string written = {}) noexcept;
    // Lists comments that were skipped since the text was last moved; header, binary
    // mark and end marker only look like comments.
    void addComments(const std::vector<FormatReader::Range>& comments) noexcept;
    // Lists the references in a value that lead to something in the file and to nothing in the document.
    void addLostReferences(const FormatValue& value) noexcept;
    bool hasObject(std::uint64_t id, std::uint64_t generation) const noexcept;
    // Whether an object with the numbers of a row is where the row says.
    bool isInFile(std::uint32_t id, const TableChain::Row& row) noexcept;

    // Objects lie inside each other, or rows lead into the same blanks, and the file was read more often than the
    // limit allows. Questions asked since then were not answered.
    bool isEndless() const noexcept;

private:
    bool isLost(const std::string& reference) noexcept;
    bool isTooMuch(std::uint64_t bytesRead) const noexcept;

    const Ref<PDF::Document> _document;
    SourceText _text;
    SourceText _headers; // the same file, to look at single objects and keep what `_text` holds
    std::map<std::uint32_t, bool> _areInFile; // what was found out of rows without an object here
    const TableChain _chain;
    const std::uint64_t _bytesReadByChain;
    std::set<std::string> _numbers; // of the document's objects
    Loss _template{};
    Losses _losses;
};

} // namespace Host
