#pragma once

#include <host/exchange/FieldValues.h>
#include <tools/Csv.h>

namespace Tools {

// The texts given to each name: one is a text, several are a list.
using NamedTexts = std::map<std::string, Host::FieldTexts>;
Host::FieldValues valuesOf(const NamedTexts& texts);

// Values of forms as CSV: the first row has the names of fields, each other one the values of one form. An empty cell
// leaves the field as it is. Where a name is there several times, its cells that aren't empty make a list of choices.
class ValueRows {
public:
    // Reads the names. Refused: no row, and an empty name.
    static Host::Result<ValueRows> create(CsvReader::Source source, char separator);

    const std::vector<std::string>& names() const { return _names; }
    // The next row, with a cell for each name; one without cells at the end. Refused as by `CsvReader`, and for another
    // number of cells.
    Host::Result<CsvRow> next();
    Host::FieldValues valuesOf(const CsvRow& row) const;
    std::uint64_t rowLine() const { return _reader.rowLine(); }
    std::uint64_t bytesRead() const { return _reader.bytesRead(); }

private:
    explicit ValueRows(CsvReader reader) : _reader(std::move(reader)) {}

    CsvReader _reader;
    std::vector<std::string> _names;
};

// Reads a text, which must outlive the reader.
CsvReader::Source sourceOf(std::string_view text);

// All fields of a form that take a value, as a row of names and a row of values. What CSV can't tell apart becomes an
// empty cell: an empty text, an empty choice, and no value.
std::string writeRow(const Host::FormFields& form, char separator);

} // namespace Tools
