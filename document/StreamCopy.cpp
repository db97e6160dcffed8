#include <document/StreamCopy.h>

#include <document/Report.h>
#include <platform/Heap.h>
#include <platform/Limits.h>
#include <stripes/ByteElements.h>
#include <stripes/ElementSizeStripe.h>

namespace Libraries::Files::PDF {

Ref<Interfaces::Stripe> StreamCopy::elements() const noexcept
{
    return isNarrow ? make<ByteElements>(block->share()) : Adapters::ElementSize::Stripe::create(block->share());
}

StreamCopy copyToMemory(Interfaces::Stripe& data, const CopyWording& wording) noexcept
{
    if (data.seek(0) != 0) {
        report.fail(ErrInvalidArgument, wording.noStart);
        return {};
    }
    const std::uint64_t count = data.size();
    const std::uint64_t width = data.elementSize();
    if (count > Limits::maxStreamSize || width > sizeof(std::uint32_t)) {
        report.fail(ErrOutOfRange, "Stream size is too large: ", count);
        return {};
    }
    Interfaces::ByteReading* const reading = byteReadingOf(data);
    const std::size_t size = reading ? count : width * count;
    void* block = Heap::alloc(size, Heap::Array, __builtin_return_address(0));
    Ref<MemInStrm> copy = MemInStrm::create(
        block, size, [](void* held, std::size_t bytes) { Heap::free(held, Heap::Array, nullptr, bytes); });
    BufferDesc area = BufferDesc::plain(block);
    if ((reading ? reading->readBytes(block, count) : data.read(area, count, waitForever)) != count) {
        report.fail(ErrNoResource, wording.noData);
        return {};
    }
    if (!copy)
        report.fail(ErrNoResource, wording.noCopy);
    return {std::move(copy), reading != nullptr};
}

} // namespace Libraries::Files::PDF
