#include <platform/MemInStrm.h>

#include <platform/MemoryArea.h>

#include <algorithm>

Ref<MemInStrm> MemInStrm::create(void* block, std::size_t size, Release release) noexcept
{
    if (!block || !release)
        return refuse(ErrNullArgument);
    return make<MemInStrm>(block, size, release);
}

MemInStrm::~MemInStrm() noexcept
{
    if (_release)
        _release(_block, _size);
}

Ref<MemInStrm> MemInStrm::share() noexcept
{
    return make<MemInStrm>(_owner ? _owner : Ref<MemInStrm>(this));
}

std::uint64_t MemInStrm::read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept
{
    return readMemory({_block, _size}, _position, area, count);
}

std::uint64_t MemInStrm::write(BufferDesc&, std::uint64_t, std::uint32_t) noexcept
{
    return moveNothing(ErrNotSupported);
}

std::uint64_t MemInStrm::seek(std::uint64_t position) noexcept
{
    return _position = std::min<std::uint64_t>(position, _size);
}
