#pragma once

#include <tools/BatchLines.h>
#include <tools/ValueRows.h>

#include <cstdio>
#include <memory>
#include <unordered_set>

namespace Tools {

// The name of the file that a row makes: a text in which "{name}" is the cell under a name, and "{number}" the number
// of the row, counted from 1, unless the rows have that name. "{{" is a bracket.
class NamePattern {
public:
    // Refused: brackets that don't match, and what is not among the names.
    static Host::Result<NamePattern> create(std::string_view text, const std::vector<std::string>& names);

    // Refused: a cell that isn't the name of a file alone, since the rows may come from anybody. It is empty, longer
    // than 200 bytes, begins with a point or has a solidus or control characters.
    Host::Result<std::string> fileName(std::uint64_t number, const CsvRow& row) const;
    // Whether each row has another name in any case.
    bool isNumbered() const;

private:
    static constexpr std::size_t number = std::size_t(-1);

    // A text, and what comes after it.
    struct Piece {
        std::string text;
        std::size_t column; // of the cell, or `number`
    };

    std::vector<Piece> _pieces;
    std::string _end;
};

// Jobs from CSV: a form is filled for each row.
class CsvJobs {
public:
    // What is done with the form of each row, and the name of its file.
    static Host::Result<CsvJobs> create(const std::string& path, char separator, std::string in, std::string_view out);

    // The next job, which has the number of its row as its id; false at the end. A row that is none, and one that makes
    // the file of an earlier one, becomes a job that can't be read.
    bool read(BatchLine& line);
    // In bytes; 0 when nobody knows.
    std::uint64_t inputSize() const;
    // Whether the end is where the file can't be read any more.
    bool isBroken() const { return *_isBroken; }

private:
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

    CsvJobs(File file, std::shared_ptr<bool> isBroken, ValueRows rows, NamePattern out, std::string in)
        : _file(std::move(file)), _isBroken(std::move(isBroken)), _rows(std::move(rows)), _out(std::move(out)),
          _in(std::move(in))
    {
    }
    std::optional<Host::Refusal> readJob(const CsvRow& row, BatchJob& job);

    File _file;
    std::shared_ptr<bool> _isBroken; // told by what reads the file
    ValueRows _rows;
    NamePattern _out;
    std::string _in;
    std::uint64_t _number = 0; // of the row
    std::unordered_set<std::size_t> _made; // hashes of names, where the pattern doesn't keep them apart
};

} // namespace Tools
