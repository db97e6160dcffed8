#include <platform/MemInStrm.h>

#include <platform/Mem.h>

#include <algorithm>

Ref<MemInStrm> MemInStrm::create(void* block, std::size_t size, Release release) noexcept
{
    if (!block || !release) {
        Error::set(ErrNullArgument);
        return nullptr;
    }
    return make<MemInStrm>(block, size, release);
}

std::uint64_t MemInStrm::read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept
{
    if (area.kind != BufferDesc::Plain) {
        Error::set(ErrInvalidArgument);
        return 0;
    }
    const std::uint64_t available = std::min<std::uint64_t>(count, _size - _position);
    Mem::copy(_block + _position, static_cast<unsigned char*>(area.pointer) + area.offset, available);
    _position += available;
    if (available < count)
        Error::set(ErrOutOfRange);
    return available;
}

std::uint64_t MemInStrm::write(BufferDesc&, std::uint64_t, std::uint32_t) noexcept
{
    Error::set(ErrNotSupported);
    return 0;
}

std::uint64_t MemInStrm::seek(std::uint64_t position) noexcept
{
    return _position = std::min<std::uint64_t>(position, _size);
}
