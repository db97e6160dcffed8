#include <stripes/SubStripe.h>

#include <platform/Reporter.h>

#include <algorithm>

namespace Libraries::Files::PDF {

namespace {

const Reporter report("PDF");

} // namespace

// Reads `count` elements, or as many as there are, by `read`, which is given their number.
template <class Reading>
std::uint64_t SubStripe::readThrough(std::uint64_t count, Reading read) noexcept
{
    if (count == 0)
        return 0;
    // Deliberate: the position is compared with the end in the wrapped stripe's coordinates, so only
    // a view with offset 0 says at its end that it is there. Callers take a short read as the end.
    if (_position >= _offset + _size)
        return moveNothing(ErrOutOfRange);
    const std::uint64_t available = std::min(count, _size - _position);
    _monitor->enter();
    if (wrapped()->seek(_offset + _position) != _offset + _position) {
        _monitor->leave();
        return 0;
    }
    const std::uint64_t got = read(available);
    if (got < available) {
        const std::uint32_t code = Error::get();
        report.oddity("Read from base ", got, " of requested ", available, "; error: ", code);
        Error::set(code);
    }
    // A stripe that claims more than it was asked for moves the view to its end, not beyond.
    _position += std::min(got, available);
    _monitor->leave();
    return got;
}

std::uint64_t SubStripe::read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    if (area.kind == BufferDesc::None)
        return moveNothing(ErrInvalidArgument);
    return readThrough(count, [&](std::uint64_t available) {
        BufferDesc copy = area;
        return wrapped()->read(copy, available, timeout);
    });
}

std::uint64_t SubStripe::readBytes(void* bytes, std::uint64_t count) noexcept
{
    return readThrough(count, [&](std::uint64_t available) { return _bytes->readBytes(bytes, available); });
}

std::uint64_t SubStripe::write(BufferDesc&, std::uint64_t, std::uint32_t) noexcept
{
    return moveNothing(ErrNotSupported);
}

std::uint64_t SubStripe::skipRead(std::uint64_t, std::uint32_t) noexcept
{
    return moveNothing(ErrNotSupported);
}

std::uint64_t SubStripe::skipWrite(std::uint64_t, std::uint32_t) noexcept
{
    return moveNothing(ErrNotSupported);
}

std::uint64_t SubStripe::resize(std::uint64_t) noexcept
{
    Error::set(ErrNotSupported);
    return size();
}

std::uint64_t SubStripe::seek(std::uint64_t position) noexcept
{
    return _position = std::min(position, _size);
}

} // namespace Libraries::Files::PDF
