#pragma once

#include <platform/Mem.h>
#include <platform/Reporter.h>
#include <platform/Stripe.h>

#include <algorithm>

// A block of bytes that a stripe reads from.
struct MemoryArea {
    const unsigned char* bytes;
    std::size_t size;
};

// The reading of a stripe of bytes in memory: up to `count` bytes from `position`, which moves past
// them. Fewer, with `ErrOutOfRange`, at the end; none, with `ErrInvalidArgument`, when the description
// isn't one of plain memory.
inline std::uint64_t readMemory(
    const MemoryArea& from, std::size_t& position, const BufferDesc& area, std::uint64_t count) noexcept
{
    if (area.kind != BufferDesc::Plain)
        return moveNothing(ErrInvalidArgument);
    const std::uint64_t available = std::min<std::uint64_t>(count, from.size - position);
    Mem::copy(from.bytes + position, static_cast<unsigned char*>(area.pointer) + area.offset, available);
    position += available;
    if (available < count)
        Error::set(ErrOutOfRange);
    return available;
}
