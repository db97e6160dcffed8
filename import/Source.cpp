#include <import/Source.h>

#include <import/Limits.h>
#include <import/Stop.h>

#include <algorithm>
#include <stdexcept>

namespace Import {

namespace {

constexpr std::string_view headerStart = "%PDF-";
constexpr std::size_t furthestHeader = 1024; // bytes

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Whether the text begins with a version, such as 1.4.
bool hasVersion(std::string_view text)
{
    const std::size_t point = static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    return point > 0 && point + 1 < text.size() && text[point] == '.' && isDigit(text[point + 1]);
}

// Where the header is that libqpdf takes; 0 when there is none.
std::size_t findHeader(std::string_view text)
{
    std::size_t place = text.find(headerStart);
    while (place < furthestHeader && !hasVersion(text.substr(place + headerStart.size())))
        place = text.find(headerStart, place + 1);
    return place < furthestHeader ? place : 0;
}

} // namespace

Source::Source(Ref<Host::FileStripe> file)
    : _file(std::move(file)), _size(_file->size()), _mayRead(Limits::maxReadings * _size + Limits::readingAllowance)
{
    _start = findHeader(readText(0, 2 * furthestHeader));
    _size -= _start;
}

std::string Source::readText(std::uint64_t position, std::size_t length)
{
    std::string text(length, '\0');
    _position = position;
    text.resize(read(text.data(), length));
    return text;
}

void Source::seek(qpdf_offset_t offset, int whence)
{
    const std::uint64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? _position : _size;
    qpdf_offset_t position = 0;
    if (__builtin_add_overflow(static_cast<qpdf_offset_t>(base), offset, &position) || position < 0)
        throw std::range_error("an offset is out of range");
    _position = static_cast<std::uint64_t>(position);
}

std::size_t Source::read(char* bytes, std::size_t length)
{
    last_offset = static_cast<qpdf_offset_t>(std::min(_position, _size));
    std::size_t done = 0;
    while (done < length && _position < _size) {
        const ByteRun run = runHere();
        const std::size_t count = std::min<std::uint64_t>(length - done, run.length);
        Mem::copy(run.bytes, bytes + done, count);
        done += count;
        advance(count);
    }
    return done;
}

// Ends after the line ends; the result is where they begin.
qpdf_offset_t Source::findAndSkipNextEOL()
{
    skipLine(false);
    const qpdf_offset_t lineEnd = tell();
    skipLine(true);
    return lineEnd;
}

// Skips what are line ends, or what are none.
void Source::skipLine(bool areLineEnds)
{
    while (_position < _size) {
        const ByteRun run = runHere();
        const std::uint8_t* const end = run.bytes + run.length;
        const std::uint8_t* const found = std::find_if(
            run.bytes, end, [&](std::uint8_t c) { return (c == '\r' || c == '\n') != areLineEnds; });
        advance(static_cast<std::uint64_t>(found - run.bytes));
        if (found != end)
            return;
    }
}

// The bytes from the position on, one at least.
ByteRun Source::runHere()
{
    const std::uint64_t place = _start + _position;
    const ByteRun run = _file->bytesAround(place);
    const std::uint64_t inRun = place - run.start;
    if (inRun >= run.length)
        throw Stop{_file->readFailure().value_or(Host::changedMeanwhile())};
    return {run.bytes + inRun, place, run.length - inRun};
}

void Source::advance(std::uint64_t count)
{
    if (count > _mayRead)
        stop(Reason::LimitReached, "its objects overlap too often");
    _mayRead -= count;
    _position += count;
}

} // namespace Import
