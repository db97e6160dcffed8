#pragma once

#include <document/ValueWriter.h>
#include <platform/MemOutStrm.h>
#include <platform/Stripe.h>
#include <values/Object.h>

#include <vector>

namespace Libraries::Files::PDF {

class Dictionary;
class Document;

// What a file is written of.
struct FileParts {
    std::uint32_t version;
    const std::vector<Ref<Object>>& objects; // in any order
    const Ref<Dictionary>& trailer;          // its `Size` is brought up to date
    std::uint32_t firstObjectId;             // of the table's subsection
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

    // False with the codes of `Document::write`; what was written then is of no use.
    bool write(const FileParts& parts) noexcept;

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

    void writeHeader(std::uint32_t version) noexcept;
    void writeObject(const Object& object) noexcept;
    void writeTable(std::uint32_t firstObjectId) noexcept;
    void writeTrailer(const Ref<Dictionary>& trailer, std::uint64_t tableOffset) noexcept;

    // Steps
    void writeLine(const MemOutStrm& line, const Message& failure) noexcept;
    void writeLineEnding() noexcept;
    void writeValue(const Ref<Value>& value, const Message& failure) noexcept;
    void writeRow(const Row& row, const Message& failure) noexcept;
    void updateSize(Dictionary& trailer) noexcept;

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
    std::vector<Row> _rows;    // of the objects that went out, after that of the free list's head
    MemOutStrm _line; // these two are kept for their memory alone
    MemOutStrm _value;
};

} // namespace Libraries::Files::PDF
