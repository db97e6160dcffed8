#pragma once

#include <document/Document.h>

#include <string>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// An object that a written table has in the row of another number, so that it can't be found by its own.
struct ShiftedRow {
    Ref<PDF::Object> object;
    std::uint64_t row; // the number that the row stands for
};

// Those of a document whose table begins with the number `first`, in the order in which they are written. The table
// has a row for each object, after a first one for none; an id that is missing has no row.
std::vector<ShiftedRow> shiftedRows(const Ref<PDF::Document>& document, std::uint64_t first) noexcept;

// What is wrong with such a row, in words.
std::string shiftedRowMessage(const ShiftedRow& shifted) noexcept;

} // namespace Host
