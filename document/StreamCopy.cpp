#include <document/StreamCopy.h>

#include <document/Report.h>
#include <platform/Heap.h>

#include <limits>

namespace Libraries::Files::PDF {

Ref<MemInStrm> copyToMemory(Interfaces::Stripe& data, const CopyWording& wording) noexcept
{
    if (data.seek(0) != 0)
        return report.fail(ErrInvalidArgument, "Failed to navigate in to be ", wording.data, " stream's data");
    const std::uint64_t count = data.size();
    if (count > std::numeric_limits<std::uint32_t>::max())
        return report.fail(ErrOutOfRange, "Stream size is too large: ", count);
    const std::size_t bytes = data.elementSize() * count;
    void* block = Heap::alloc(bytes, Heap::Array, __builtin_return_address(0));
    Ref<MemInStrm> copy = MemInStrm::create(
        block, bytes, [](void* held, std::size_t size) { Heap::free(held, Heap::Array, nullptr, size); });
    BufferDesc area = BufferDesc::plain(block);
    if (data.read(area, count, waitForever) != count)
        return report.fail(ErrNoResource, "Failed to read from to be ", wording.data, " stream's data");
    if (!copy)
        return report.fail(ErrNoResource, "Failed to create ", wording.copy, " stream");
    return copy;
}

} // namespace Libraries::Files::PDF
