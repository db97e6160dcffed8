#pragma once

#include <document/ValueParser.h>

namespace Libraries::Files::PDF {

// A free row of the cross-reference table whose generation isn't the usual one.
struct FreeRow {
    std::uint32_t id;
    std::uint16_t generation;

    static constexpr std::uint16_t usualGeneration(std::uint32_t id) { return id == 0 ? 65535 : 0; }
};

// What a file holds.
struct FileContent {
    std::uint32_t version = 0;
    Ref<::String> lineEnding;
    Ref<Dictionary> trailer;
    std::uint32_t firstObjectId = 0;  // of the table's subsection
    std::uint32_t nextObjectId = 0;   // one past the last of the subsection
    std::vector<Ref<Object>> objects; // those in use, in table order
    std::uint32_t opening = 0;        // the number that their streams have
    ReadingNotes notes;
    ReadingNotes unkeptNotes; // of these those in no value whose source was kept
    std::vector<KeptSource> sources;
    std::vector<FreeRow> freeRows;    // of the others, in table order
};

// Opens a file: the header line, then from the end of the file backwards to the trailer, then the
// cross-reference table, then every object that it calls in use. Nothing is repaired or skipped.
class FileReader {
public:
    // Begins where the stripe is, which must outlive the reader.
    explicit FileReader(Interfaces::Stripe& stripe) noexcept : _elements(stripe), _parser(_elements) {}

    // Reads the whole file. False with the code that `Document::create` leaves; the content is of no use then.
    bool read(FileContent& content) noexcept;

private:
    // One row of the cross-reference table.
    struct Row {
        std::uint64_t offset; // of a free row it is never used
        std::uint16_t generation;
        bool inUse;
    };

    bool readHeader(FileContent& content) noexcept;
    bool readLineEnding(FileContent& content) noexcept;
    bool readTrailer(FileContent& content, std::uint64_t& tableOffset) noexcept;
    bool readTable(std::uint64_t offset, std::uint32_t& firstObjectId) noexcept;
    bool readRow(std::u32string_view line) noexcept;
    void noteAfterTable() noexcept;
    bool readObjects(FileContent& content) noexcept;

    ElementReader _elements;
    ValueParser _parser;
    std::vector<Row> _rows;
    std::uint64_t _afterTrailer = 0; // the keyword
};

} // namespace Libraries::Files::PDF
