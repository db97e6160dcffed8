#pragma once

#include <document/ContentHash.h>
#include <document/ValueWriter.h>
#include <platform/MemOutStrm.h>
#include <platform/Stripe.h>
#include <values/Object.h>

#include <optional>
#include <vector>

namespace Libraries::Files::PDF {

class Dictionary;
class Document;
struct FreeRow;
class KeptSources;

// What an exact file is written of besides.
struct ExactParts {
    std::uint32_t nextObjectId; // the table has a row for each id before it
    const std::vector<FreeRow>& freeRows;
    const KeptSources& sources;
    std::uint64_t sourceSize;
    bool isIdKept; // the second part of the trailer's `ID` isn't brought up to date
};

// What a file is written of.
struct FileParts {
    std::uint32_t version;
    const std::vector<Ref<Object>>& objects; // in any order
    const Ref<Dictionary>& trailer;          // of a plain file its `Size` is brought up to date
    std::uint32_t firstObjectId;             // of the table's subsection; 0 for an exact file
    const ExactParts* exact = nullptr;       // null for a plain file
};

// Writes a file in its order: header, objects, cross-reference table, trailer. The first step that fails writes
// its line, and those after it do nothing, so that each part of the file reads as it will look.
class FileWriter final : private ByteOutlet {
public:
    // All must outlive the writer. `document` gives the data of streams. Every line ends in `lineEnding`.
    // Stream data goes out as bytes, a block at a time, where `out` takes them (`Interfaces::ByteWriting`).
    FileWriter(Document& document, const ::String& lineEnding, Interfaces::Stream& out) noexcept
        : _document(document), _lineEnding(lineEnding), _out(out), _bytesOut(byteWritingOf(out))
    {
    }

    // False with the codes of `Document::write`, or, for an exact file, `ErrOutOfRange` when the ids leave too large
    // gaps; what was written then is of no use.
    bool write(const FileParts& parts) noexcept;
    // The trailer that was written.
    const Ref<Dictionary>& trailer() const noexcept { return _trailer; }

private:
    // One row of the table.
    struct Row {
        std::uint64_t offset;
        std::uint16_t generation;
        char kind; // n or f
    };
    // What the line of a failed step says. Of a step for an object, its name follows.
    struct Message {
        const char* text;
        const Object* object = nullptr;
    };

    bool writeParts(const FileParts& parts, const std::vector<Ref<Object>>& objects) noexcept;
    void writeHeader(std::uint32_t version) noexcept;
    void writeObject(const Object& object) noexcept;
    void writeTable(std::uint32_t firstObjectId) noexcept;
    void writeTrailer(std::uint64_t tableOffset) noexcept;

    // What an exact file has otherwise
    bool begin(const FileParts& parts, const std::vector<Ref<Object>>& objects) noexcept;
    void addFreeRows(std::uint64_t end) noexcept;
    void linkFreeRows(const std::vector<FreeRow>& known) noexcept;
    void updateId() noexcept;

    // Steps
    void writeLine(const MemOutStrm& line, const Message& failure) noexcept;
    void writeLineEnding() noexcept;
    void writeValue(const Ref<Value>& value, Dialect dialect, const Message& failure) noexcept;
    void writeRow(const Row& row, const Message& failure) noexcept;
    void updateSize() noexcept;

    // ByteOutlet
    bool send(MemOutStrm& text) noexcept override;
    bool send(const std::uint8_t* bytes, std::uint64_t count) noexcept override;

    // What steps are made of
    bool put(const std::uint32_t* elements, std::uint64_t count) noexcept;
    template <class... Pieces>
    void fail(const Pieces&... pieces) noexcept;
    void endStep(const Message& failure) noexcept;
    MemOutStrm& newLine() noexcept;
    const MemOutStrm& keyword(const char* keyword) noexcept;

    Document& _document;
    const ::String& _lineEnding;
    Interfaces::Stream& _out;
    Interfaces::ByteWriting* const _bytesOut; // the same, if it takes bytes
    bool _hasFailed = false;
    std::uint64_t _offset = 0; // the elements that went out
    const ExactParts* _exact = nullptr;
    Ref<Dictionary> _trailer;
    std::optional<ContentHash> _hash; // of what went out, if it is asked for
    std::vector<Row> _rows;           // of the objects that went out, after that of the free list's head
    MemOutStrm _line; // these two are kept for their memory alone
    MemOutStrm _value;
};

} // namespace Libraries::Files::PDF
