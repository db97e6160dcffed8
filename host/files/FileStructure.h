#pragma once

#include <host/files/FileStripe.h>

#include <cstddef>
#include <string>

namespace Host {

// How a PDF file is stored: what decides whether `open` has all of it, or has to refuse it.
struct FileStructure {
    std::size_t tables = 0;       // cross-reference tables, each with a trailer
    std::size_t tableStreams = 0; // cross-reference streams
    // What reading these may cost: how many rows they say they have, and whether one has several filters, a
    // predictor with rows of more than a few thousand bytes, or can't be told, all of which no program makes.
    std::uint64_t streamedRows = 0;
    bool hasCostlyFilters = false;
    bool hasObjectStreams = false;
    bool isEncrypted = false;
    bool hasSubsections = false;     // the newest table has more than one
    bool isTrailerOnOneLine = false; // the newest trailer's dictionary begins on the line of the keyword
    bool isHeaderInside = false;     // there is something before the header

    // Whether it is none of these: one table of one subsection, after the first line.
    bool isPlain() const noexcept;
};

// What is looked for.
enum class StructureParts {
    All,
    Tables, // `hasObjectStreams` stays false: nothing but the whole file tells that
};

// Follows the tables of a file, without reading its objects. What is broken ends the search.
EXPORTED FileStructure findStructure(FileStripe& file, StructureParts parts = StructureParts::All) noexcept;

// What a structure has that `open` doesn't take, or doesn't take all of, for people: "cross-reference streams, object
// streams, encrypted". Empty when there is nothing.
EXPORTED std::string structureWords(const FileStructure& structure) noexcept;

} // namespace Host
