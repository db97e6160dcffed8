#pragma once

#include <platform/Stripe.h>

namespace Libraries::Adapters::ElementSize {

// A stripe of bytes seen as a stripe of elements of 4 bytes, the width in which the library deals
// with all text and stream data of files. What is left over of a byte count is cut off: a source of
// 10 bytes has 2 elements. A count or position whose bytes can't be counted in 64 bits is a failure:
// less is moved than was asked for, and a `resize` to it leaves `ErrOutOfRange` and changes nothing.
class EXPORTED Stripe final : public ::Object, public virtual Interfaces::Stripe {
public:
    // Null with `ErrNullArgument` for a null source, with `ErrNotSupported` for one whose width is 0
    // or doesn't divide 4. Deliberate: the scale is 4 for every source, so one of width 2 or 4 is
    // taken, and 4 of its elements then make one of the adapter.
    static Ref<Interfaces::Stripe> create(Ref<Interfaces::Stripe> source) noexcept;

    // As `create`, of a source that it takes.
    explicit Stripe(Ref<Interfaces::Stripe> source) noexcept : _source(std::move(source)) {}

    // Interfaces::Data
    std::uint64_t elementSize() const noexcept override { return _elementSize; }
    SharedHandle shareOut(Ref<SharedMemory> memory) noexcept override;
    SharedHandle shareIn(SharedHandle handle) noexcept override;
    // Interfaces::Stream
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t skipRead(std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t skipWrite(std::uint64_t count, std::uint32_t timeout) noexcept override;
    // Interfaces::Extent
    std::uint64_t size() const noexcept override;
    std::uint64_t capacity() const noexcept override;
    std::uint64_t limit() const noexcept override;
    std::uint64_t resize(std::uint64_t count) noexcept override;
    // Interfaces::Stripe
    std::uint64_t seek(std::uint64_t position) noexcept override;
    std::uint64_t tell() const noexcept override;

private:
    const Ref<Interfaces::Stripe> _source;
    static constexpr std::uint64_t _elementSize = 4;
};

} // namespace Libraries::Adapters::ElementSize
