#include <document/StreamPump.h>

#include <platform/Heap.h>
#include <platform/Mem.h>
#include <platform/MemoryStream.h>

#include <algorithm>
#include <optional>

namespace Libraries::Files::PDF {

namespace {

constexpr std::size_t blockSize = 65536;

// A work buffer of one block.
struct Block {
    Block() noexcept
        : bytes(static_cast<unsigned char*>(Heap::alloc(blockSize, Heap::Array, __builtin_return_address(0))))
    {
    }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    ~Block() noexcept { Heap::free(bytes, Heap::Array, __builtin_return_address(0), blockSize); }
    unsigned char* const bytes;
};

bool writeAll(Interfaces::Stream& target, const Block& block, std::size_t count)
{
    BufferDesc area = BufferDesc::plain(block.bytes);
    return count == 0 || target.write(area, count, waitForever) == count;
}

// What comes out of a filter on its way to the target: through a block, or, where that is memory, at once.
class Outlet {
public:
    explicit Outlet(Interfaces::Stream& target) noexcept
        : _target(target), _memory(dynamic_cast<MemoryStream*>(&target))
    {
        if (!_memory)
            _block.emplace();
    }

    // Room for a block of the filter's output.
    unsigned char* room() noexcept { return _memory ? _memory->room(blockSize) : _block->bytes; }
    // Passes on what the room was filled with; false when it can't be written.
    bool pass(std::size_t count) noexcept
    {
        if (!_memory)
            return writeAll(_target, *_block, count);
        _memory->extend(count);
        return true;
    }

private:
    Interfaces::Stream& _target;
    MemoryStream* const _memory; // the target, if it is memory
    std::optional<Block> _block; // if it is none
};

// Feeds one block to the filter: `count` bytes that follow `carried` ones, which are the rest of the block
// before. Afterwards `count` is what is left over. Deliberate: the filter is first shown
// the new bytes alone, and what it leaves moves to the front together with the carried ones.
PumpEnd feed(BlockFilter& filter, Block& in, std::size_t carried, std::size_t& count, Outlet& out)
{
    std::size_t position = carried;
    std::size_t produced = 0;
    do {
        std::size_t consumed = 0;
        if (!filter.process(in.bytes + position, count, out.room(), blockSize, &consumed, &produced))
            return PumpEnd::Convert;
        if (!out.pass(produced))
            return PumpEnd::Write;
        if (consumed != 0) {
            Mem::move(in.bytes + consumed, in.bytes, count - consumed + carried);
            count -= consumed;
            position = 0;
        }
    } while (produced != 0 && count != 0);
    return PumpEnd::Done;
}

PumpEnd flush(BlockFilter& filter, Outlet& out)
{
    for (;;) {
        std::size_t produced = 0;
        const int result = filter.flush(out.room(), blockSize, &produced);
        if (result == 2)
            return PumpEnd::Flush;
        if (!out.pass(produced))
            return PumpEnd::WriteFlushed;
        if (result != 1)
            return PumpEnd::Done;
    }
}

} // namespace

const char* pumpFailure(PumpEnd end) noexcept
{
    switch (end) {
    case PumpEnd::Done: break;
    case PumpEnd::Read: return "Failed to read converted stream data of stream";
    case PumpEnd::Convert: return "Failed to convert data of stream";
    case PumpEnd::Write: return "Failed to write converted stream data of stream";
    case PumpEnd::WriteUnfiltered: return "Failed to write stream data of stream";
    case PumpEnd::Flush: return "Failed to flush conversion of stream";
    case PumpEnd::WriteFlushed: return "Failed to write flushed converted stream data of stream";
    }
    return "";
}

PumpResult pump(
    Interfaces::Stream& source, std::uint64_t amount, BlockFilter* filter, Interfaces::Stream& target) noexcept
{
    Block in;
    Outlet out(target);
    std::size_t carried = 0;
    // A filter that has come to its end takes no more: once it has left a whole block over, there is
    // no room to read into, and nothing that follows could matter.
    for (std::uint64_t left = amount; left != 0 && carried < blockSize;) {
        const std::uint64_t chunk = std::min<std::uint64_t>(left, blockSize - carried);
        BufferDesc area = BufferDesc::plain(in.bytes + carried);
        const std::uint64_t got = source.read(area, chunk, waitForever);
        if (got != chunk)
            return {PumpEnd::Read, got, chunk, Error::get()};
        std::size_t count = chunk;
        if (!filter && !writeAll(target, in, count))
            return {PumpEnd::WriteUnfiltered};
        if (filter)
            if (const PumpEnd end = feed(*filter, in, carried, count, out); end != PumpEnd::Done)
                return {end};
        left -= chunk;
        carried = filter ? count : 0;
    }
    return {filter ? flush(*filter, out) : PumpEnd::Done};
}

} // namespace Libraries::Files::PDF
