#include <platform/MemoryStream.h>

#include <platform/Heap.h>
#include <platform/Mem.h>
#include <platform/MemoryArea.h>

#include <algorithm>

Ref<MemoryStream> MemoryStream::create(std::size_t size, std::size_t elementSize) noexcept
{
    if (elementSize != 1)
        return refuse(ErrNotSupported);
    Ref<MemoryStream> stream = make<MemoryStream>();
    stream->resize(size);
    return stream;
}

MemoryStream::~MemoryStream() noexcept
{
    Heap::free(_block, Heap::Array, __builtin_return_address(0), _capacity);
}

void MemoryStream::reserve(std::size_t needed) noexcept
{
    if (needed <= _capacity)
        return;
    // Half again: large blocks move without a copy, and little is left over.
    _capacity = std::max({needed, _capacity + _capacity / 2, std::size_t(64)});
    _block = static_cast<unsigned char*>(
        Heap::resize(_block, _capacity, Heap::Array, __builtin_return_address(0)));
}

void MemoryStream::fit() noexcept
{
    if (_capacity == _size)
        return;
    _capacity = _size;
    _block = static_cast<unsigned char*>(
        Heap::resize(_block, _capacity, Heap::Array, __builtin_return_address(0)));
}

unsigned char* MemoryStream::room(std::size_t count) noexcept
{
    reserve(_position + count);
    return _block + _position;
}

void MemoryStream::extend(std::size_t count) noexcept
{
    _position += count;
    _size = std::max(_size, _position);
}

void MemoryStream::append(const void* bytes, std::size_t count) noexcept
{
    Mem::copy(bytes, room(count), count);
    extend(count);
}

std::uint64_t MemoryStream::read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept
{
    return readMemory({_block, _size}, _position, area, count);
}

std::uint64_t MemoryStream::write(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept
{
    if (area.kind != BufferDesc::Plain)
        return moveNothing(ErrInvalidArgument);
    append(static_cast<const unsigned char*>(area.pointer) + area.offset, count);
    return count;
}

std::uint64_t MemoryStream::resize(std::uint64_t count) noexcept
{
    reserve(count);
    if (count > _size)
        Mem::fill8(_block + _size, count - _size, 0);
    _size = count;
    _position = std::min<std::size_t>(_position, _size);
    return _size;
}

std::uint64_t MemoryStream::seek(std::uint64_t position) noexcept
{
    return _position = std::min<std::uint64_t>(position, _size);
}
