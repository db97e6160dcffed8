#include <tools/Csv.h>

#include <host/base/Utf8.h>
#include <platform/Limits.h>

#include <utility>

namespace Tools {

namespace {

constexpr std::size_t bufferSize = 65536;
constexpr const char* notUtf8 = "the text before this is not UTF-8";
constexpr std::string_view mark = "\xEF\xBB\xBF"; // of the byte order

} // namespace

CsvReader::CsvReader(Source source, char separator)
    : _source(std::move(source)), _separator(separator), _buffer(bufferSize)
{
    std::size_t taken = 0;
    for (; taken < mark.size() && here() == static_cast<unsigned char>(mark[taken]); ++taken)
        moveOn();
    _isMarkBroken = taken % mark.size() != 0;
    _column = 1;
}

// The next byte, which isn't taken.
int CsvReader::here()
{
    if (_place == _size && !_isOver) {
        _place = 0;
        _size = _source(_buffer.data(), _buffer.size());
        _bytesRead += _size;
        _isOver = _size == 0;
    }
    return _isOver ? end : static_cast<unsigned char>(_buffer[_place]);
}

void CsvReader::moveOn()
{
    const int c = here();
    ++_place;
    ++_rowSize;
    if (c == '\n') {
        ++_line;
        _column = 1;
    } else if ((c & 0xC0) != 0x80) { // the first byte of a character
        ++_column;
    }
}

Host::Refusal CsvReader::refuse(const char* what)
{
    std::string place = "line " + std::to_string(_line) + ", column " + std::to_string(_column) + ": ";
    skipLine();
    return {Host::Reason::BrokenRule, place + what};
}

void CsvReader::skipLine()
{
    while (here() != end && here() != '\n')
        moveOn();
    if (here() == '\n')
        moveOn();
}

bool CsvReader::endsCell(int c) const
{
    return c == end || c == '\n' || c == '\r' || c == static_cast<unsigned char>(_separator);
}

bool CsvReader::takeLineEnd()
{
    if (here() == '\r')
        moveOn();
    if (here() != '\n')
        return false;
    moveOn();
    return true;
}

void CsvReader::skipEmptyLines()
{
    while (here() == '\n' || here() == '\r')
        if (!takeLineEnd())
            return;
}

Host::Result<CsvRow> CsvReader::read()
{
    if (std::exchange(_isMarkBroken, false))
        return refuse(notUtf8);
    skipEmptyLines();
    CsvRow row;
    _rowLine = _line;
    _rowSize = 0;
    while (here() != end || !row.empty()) {
        std::string cell;
        const char* fault = here() == '"' ? readQuoted(cell) : readCell(cell);
        if (fault)
            return refuse(fault);
        if (!Host::fromUtf8(cell))
            return refuse(notUtf8);
        row.push_back(std::move(cell));
        if (here() == end || here() != static_cast<unsigned char>(_separator)) {
            if (here() != end && !takeLineEnd())
                return refuse("a carriage return without a line feed");
            return row;
        }
        moveOn();
    }
    return row;
}

// What is wrong; null when nothing is. Ends at the separator or the line end.
const char* CsvReader::readCell(std::string& cell)
{
    for (int c = here(); !endsCell(c); c = here()) {
        if (c == '"')
            return "a quote in a cell that doesn't begin with one";
        if (_rowSize > Limits::maxValuesFile)
            return "the row is too long";
        cell += static_cast<char>(c);
        moveOn();
    }
    return nullptr;
}

const char* CsvReader::readQuoted(std::string& cell)
{
    moveOn();
    for (;; moveOn()) {
        const int c = here();
        if (c == end)
            return "the file ends in a cell whose quote isn't closed";
        if (_rowSize > Limits::maxValuesFile) {
            _isOver = true; // nobody knows where the next row begins
            return "the row is too long, and may have a quote that isn't closed";
        }
        if (c == '"') {
            moveOn();
            if (here() != '"')
                break;
        }
        cell += static_cast<char>(c);
    }
    return endsCell(here()) ? nullptr : "text after the closing quote of a cell";
}

std::string csvCell(std::string_view text, char separator)
{
    const bool isPlain = text.find_first_of("\"\r\n,;\t") == text.npos && text.find(separator) == text.npos
        && !text.starts_with(mark) && !text.starts_with(' ') && !text.ends_with(' ');
    if (isPlain)
        return std::string(text);
    std::string out = "\"";
    for (const char c : text)
        out.append(c == '"' ? 2 : 1, c);
    return out + '"';
}

} // namespace Tools
