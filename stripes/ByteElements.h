#pragma once

#include <platform/Stripe.h>

namespace Libraries::Files::PDF {

// A stripe of bytes seen as a stripe of 4-byte elements, one for each byte: its Windows-1252 code point. It
// is what stream data in memory is held in. An element that stands for no byte can be written too; all
// elements are then held in 4 bytes each.
class ByteElements final : public ::Object, public virtual Interfaces::Stripe, public virtual Interfaces::ByteReading {
public:
    // `bytes`, of width 1, must not be null.
    explicit ByteElements(Ref<Interfaces::Stripe> bytes) noexcept : _bytes(std::move(bytes)) {}

    // Interfaces::Stripe. Codes and short counts are those of the stripe of bytes. Plain memory alone is
    // taken: `ErrInvalidArgument`. A size whose elements couldn't have 4 bytes each is refused with `ErrOutOfRange`.
    std::uint64_t elementSize() const noexcept override { return sizeof(std::uint32_t); }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t size() const noexcept override { return held().size(); }
    std::uint64_t capacity() const noexcept override { return held().capacity(); }
    std::uint64_t limit() const noexcept override;
    std::uint64_t resize(std::uint64_t count) noexcept override;
    std::uint64_t seek(std::uint64_t position) noexcept override { return held().seek(position); }
    std::uint64_t tell() const noexcept override { return held().tell(); }
    // Interfaces::ByteReading
    bool hasBytes() const noexcept override { return !_wide; }
    std::uint64_t readBytes(void* bytes, std::uint64_t count) noexcept override;

private:
    Interfaces::Stripe& held() const noexcept { return _wide ? *_wide : *_bytes; }
    void widen() noexcept;

    Ref<Interfaces::Stripe> _bytes;
    Ref<Interfaces::Stripe> _wide; // in the place of `_bytes`, once an element was written that has none
};

} // namespace Libraries::Files::PDF
