#include <platform/ElementReader.h>

#include <platform/Limits.h>

#include <algorithm>

ElementReader::ElementReader(Interfaces::Stripe& stripe) noexcept
    : _stripe(stripe), _shown(dynamic_cast<Interfaces::ShownBytes*>(&stripe)), _start(stripe.tell())
{
}

void ElementReader::show(const ByteRun& run, std::uint64_t position) noexcept
{
    _bytes = run.bytes;
    _byte = run.bytes + (position - run.start);
    _end = run.bytes + run.length;
    _start = run.start;
}

bool ElementReader::nextFromStripe(std::uint32_t& c) noexcept
{
    if (!_shown) {
        if (_left == 0)
            return false;
        --_left;
        return readElement(_stripe, c);
    }
    const std::uint64_t position = tell();
    const std::uint64_t end = size();
    ByteRun run = _shown->bytesAround(position);
    // A stripe that shows other bytes than it was asked for has shown none; what is after its end doesn't count.
    if (!run.bytes || run.start > position || position - run.start >= run.length || position >= end) {
        show({nullptr, position, 0}, position);
        return false;
    }
    run.length = std::min(run.length, end - run.start);
    show(run, position);
    return next(c);
}

bool ElementReader::read(std::uint32_t* elements, std::size_t count) noexcept
{
    if (_shown)
        return std::all_of(elements, elements + count, [this](std::uint32_t& element) { return next(element); });
    BufferDesc area = BufferDesc::plain(elements);
    return _stripe.read(area, count, waitForever) == count;
}

bool ElementReader::seek(std::uint64_t position) noexcept
{
    if (!_shown)
        return _stripe.seek(position) == position;
    if (position - _start <= std::uint64_t(_end - _bytes)) {
        _byte = _bytes + (position - _start);
        return true;
    }
    const std::uint64_t reached = _stripe.seek(position);
    show({nullptr, reached, 0}, reached);
    return reached == position;
}

ElementReader::Got ElementReader::tryNext(std::uint32_t& c) noexcept
{
    if (next(c))
        return Got::Character;
    return tell() < size() ? Got::Failure : Got::End;
}

// After a CR: passes a LF, and gives back anything else.
bool ElementReader::passLineFeed() noexcept
{
    std::uint32_t c = 0;
    const Got got = tryNext(c);
    if (got != Got::Character || c == '\n')
        return got != Got::Failure;
    return seek(tell() - 1);
}

bool ElementReader::readPieces(std::u32string& line, std::size_t count) noexcept
{
    line.clear();
    std::size_t pieces = 0;
    std::uint32_t c = 0;
    for (;;) {
        const Got got = tryNext(c);
        if (got == Got::Failure || (got == Got::End && line.empty()))
            return false;
        if (got == Got::End || c == '\n')
            break;
        if (c == '\r') {
            if (!passLineFeed())
                return false;
            break;
        }
        if (c == ' ' && !line.empty() && line.back() != U' ' && ++pieces == count)
            break;
        line += char32_t(c);
        if (line.size() % Limits::lineStep == 0 && line.size() > size())
            return false;
    }
    return true;
}
