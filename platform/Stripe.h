#pragma once

#include <platform/Error.h>
#include <platform/Object.h>

// Random-access data as the library sees it. All counts, positions and sizes are in elements.

// A block of memory that a stripe shares with its users.
class EXPORTED SharedMemory : public virtual RefCount {
public:
    // Where the block is; it stays there as long as the object lives.
    virtual void* data() noexcept = 0;
    // In bytes.
    virtual std::uint64_t size() const noexcept = 0;
};

// Names a shared block between the two sides of a stream; all zero when there is none.
struct SharedHandle {
    // The block; the words after it are the sides' own, and the last is what they tell it by.
    Ref<SharedMemory> memory;
    std::uint64_t reserved = 0;
    std::uint64_t counter = 0;
    std::uint64_t reserved2 = 0;
    std::uint64_t id = 0;
};

// Describes a memory area handed to `read` and `write`.
struct BufferDesc {
    // What the area is: none, a block that was shared out, or plain memory at an address.
    enum Kind : std::uint32_t { None = 0, Shared = 1, Plain = 2 };

    Kind kind = None;             // decides which of the others count
    std::uint64_t offset = 0;     // in bytes, added to the address
    void* pointer = nullptr;      // for plain memory: its address
    Ref<RefCount> owner;          // for the user's own use; the library leaves it alone
    std::uint64_t shared[4] = {}; // for shared memory: the words of its handle, the id last
    // The shared block, when it was found already.
    Ref<SharedMemory> memory;

    // Plain memory at an address, which stays the caller's.
    static BufferDesc plain(void* area) noexcept
    {
        BufferDesc result;
        result.kind = Plain;
        result.pointer = area;
        return result;
    }
};

// A run of bytes in memory that stands for a part of a larger whole.
struct ByteRun {
    const std::uint8_t* bytes = nullptr; // null when there are none
    std::uint64_t start = 0;             // in the whole
    std::uint64_t length = 0;            // in bytes
};

// The timeout that waits without limit, the only one that the library passes.
constexpr std::uint32_t waitForever = ~std::uint32_t(0);

namespace Interfaces {

// What all data has: elements of one width.
class EXPORTED Data : public virtual RefCount {
public:
    // The width of one element in bytes.
    virtual std::uint64_t elementSize() const noexcept = 0;
    // Give out and take back a shared block; not offered unless overridden: `ErrNotSupported`, a handle
    // of all zeros. The library itself never creates one.
    virtual SharedHandle shareOut(Ref<SharedMemory> memory) noexcept;
    virtual SharedHandle shareIn(SharedHandle handle) noexcept;
};

// Data that is moved through memory from where the stream is.
class EXPORTED Stream : public virtual Data {
public:
    // Move `count` elements between the area and the present position, and return how many were
    // moved. Anything else than `count` is a failure to the library; the code is the implementer's.
    virtual std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept = 0;
    virtual std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept = 0;
    // Pass over elements; not offered unless overridden: `ErrNotSupported`, 0. The library never
    // calls these.
    virtual std::uint64_t skipRead(std::uint64_t count, std::uint32_t timeout) noexcept;
    virtual std::uint64_t skipWrite(std::uint64_t count, std::uint32_t timeout) noexcept;
};

// Data of a size.
class EXPORTED Extent : public virtual RefCount {
public:
    // In elements.
    virtual std::uint64_t size() const noexcept = 0;
    // The elements that fit without growing, and those that there can ever be; `size()` unless
    // overridden. The library never calls these.
    virtual std::uint64_t capacity() const noexcept;
    virtual std::uint64_t limit() const noexcept;
    // Returns the size reached; not offered unless overridden: `ErrNotSupported`, `size()`.
    virtual std::uint64_t resize(std::uint64_t count) noexcept;
};

// What an application implements to hand a file to `Document::create`: `elementSize`, `read`,
// `write`, `size`, `seek` and `tell`. Every operation is `noexcept`.
class EXPORTED Stripe : public virtual Stream, public virtual Extent {
public:
    // Returns the position reached; one other than that asked for is a failure.
    virtual std::uint64_t seek(std::uint64_t position) noexcept = 0;
    virtual std::uint64_t tell() const noexcept = 0;
};

// What a stripe may offer besides, so that opening a file needs no call for each of its characters: the bytes
// of the file where they are. An element of 4 bytes is the Windows-1252 code point of its byte.
class EXPORTED ShownBytes : public virtual RefCount {
public:
    // Some bytes, that at `position` among them; they stay until others are asked for, or the stripe is read or
    // moved. None, with the code that `read` leaves there, at the end and where they can't be had. Bytes that
    // `position` isn't among count as none; those after `size()` aren't looked at.
    virtual ByteRun bytesAround(std::uint64_t position) noexcept = 0;
};

// What a stripe of 4-byte elements may offer besides, so that stream data needn't become elements on its way
// between two places that hold bytes.
class EXPORTED ByteReading : public virtual RefCount {
public:
    // Whether all that it holds are Windows-1252 code points of bytes; else `readBytes` must not be called.
    virtual bool hasBytes() const noexcept = 0;
    // As `read` into plain memory, but gives the bytes that the elements stand for.
    virtual std::uint64_t readBytes(void* bytes, std::uint64_t count) noexcept = 0;
};

// The counterpart of a stream of 4-byte elements that a file is written to.
class EXPORTED ByteWriting : public virtual RefCount {
public:
    // Whether it takes bytes; else `writeBytes` must not be called.
    virtual bool takesBytes() const noexcept = 0;
    // As `write` from plain memory, but is given the bytes that the elements stand for.
    virtual std::uint64_t writeBytes(const void* bytes, std::uint64_t count) noexcept = 0;
};

} // namespace Interfaces

// How a stripe of 4-byte elements gives its bytes; null where it has elements of another width, or doesn't give
// them.
inline Interfaces::ByteReading* byteReadingOf(Interfaces::Stripe& stripe) noexcept
{
    auto* const reading = dynamic_cast<Interfaces::ByteReading*>(&stripe);
    return reading && reading->hasBytes() && stripe.elementSize() == sizeof(std::uint32_t) ? reading : nullptr;
}

// How a stream of 4-byte elements takes bytes; null where it has elements of another width, or takes none.
inline Interfaces::ByteWriting* byteWritingOf(Interfaces::Stream& stream) noexcept
{
    auto* const writing = dynamic_cast<Interfaces::ByteWriting*>(&stream);
    return writing && writing->takesBytes() && stream.elementSize() == sizeof(std::uint32_t) ? writing : nullptr;
}

// The next element of a stripe of 4-byte elements; false when there is none, or none can be had.
inline bool readElement(Interfaces::Stripe& stripe, std::uint32_t& element) noexcept
{
    BufferDesc area = BufferDesc::plain(&element);
    return stripe.read(area, 1, waitForever) == 1;
}
