#pragma once

#include <host/base/Result.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Tools {

// The cells of a row of CSV.
using CsvRow = std::vector<std::string>;

// Reads CSV as RFC 4180 has it, row by row: cells in quotes may hold separators, line ends and doubled quotes. Lines
// end with LF or CR LF. A byte order mark before the first cell and empty lines are skipped. Texts are UTF-8. It holds
// no more than one row.
class CsvReader {
public:
    // Puts up to so many bytes into a buffer and says how many; 0 at the end.
    using Source = std::function<std::size_t(char* buffer, std::size_t size)>;

    CsvReader(Source source, char separator);

    // The next row; one without cells at the end. After a refusal, which says line and column, it goes on with the next
    // line, or is at the end when it can't tell where that is.
    Host::Result<CsvRow> read();
    // The line in which the row that was read last begins, the first one being 1; also of a row that was refused.
    std::uint64_t rowLine() const { return _rowLine; }
    std::uint64_t bytesRead() const { return _bytesRead; }

private:
    static constexpr int end = -1;

    int here();
    void moveOn();
    Host::Refusal refuse(const char* what);
    void skipLine();
    void skipEmptyLines();
    const char* readCell(std::string& cell);
    const char* readQuoted(std::string& cell);
    bool takeLineEnd();
    bool endsCell(int c) const;

    Source _source;
    char _separator;
    std::vector<char> _buffer;
    std::size_t _place = 0; // in the buffer
    std::size_t _size = 0;  // of what is in it
    std::uint64_t _bytesRead = 0;
    std::uint64_t _line = 1;
    std::uint64_t _rowLine = 1;
    std::uint64_t _column = 1; // in characters
    std::size_t _rowSize = 0;
    bool _isMarkBroken = false; // the first bytes are those of a mark, and others follow
    bool _isOver = false;
};

// A cell as it is written: in quotes where it needs them.
std::string csvCell(std::string_view text, char separator);

} // namespace Tools
