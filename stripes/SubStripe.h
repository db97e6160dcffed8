#pragma once

#include <platform/Mon.h>
#include <stripes/BaseStripe.h>

namespace Libraries::Files::PDF {

// A read-only view of a range of a stripe, with a position of its own: it seeks the wrapped stripe
// before every read, under the monitor, so that many views can share one stripe. It keeps stripe
// and monitor alive. One view belongs to one user at a time.
class SubStripe final : public Adapters::Base::Stripe, public virtual Interfaces::ByteReading {
public:
    // The view of `size` elements from `offset` on. Neither is tested: the view may reach beyond the
    // wrapped stripe. `monitor` must not be null.
    SubStripe(Ref<Interfaces::Stripe> base, Ref<Mon> monitor, std::uint64_t offset, std::uint64_t size) noexcept
        : Stripe(std::move(base)), _offset(offset), _size(size), _monitor(std::move(monitor)),
          _bytes(dynamic_cast<Interfaces::ByteReading*>(wrapped().get()))
    {
    }

    // Interfaces::Stream. A short read is the end or a failure of the wrapped stripe, which logs; at
    // the end the code `ErrOutOfRange` comes only for a view with offset 0.
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t skipRead(std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t skipWrite(std::uint64_t count, std::uint32_t timeout) noexcept override;
    // Interfaces::Extent. The size is the view's, whatever the wrapped stripe's may be.
    std::uint64_t size() const noexcept override { return _size; }
    std::uint64_t resize(std::uint64_t count) noexcept override;
    // Interfaces::Stripe. A seek beyond the end stops there.
    std::uint64_t seek(std::uint64_t position) noexcept override;
    std::uint64_t tell() const noexcept override { return _position; }
    // Interfaces::ByteReading
    bool hasBytes() const noexcept override { return _bytes && _bytes->hasBytes(); }
    std::uint64_t readBytes(void* bytes, std::uint64_t count) noexcept override;

private:
    template <class Reading>
    std::uint64_t readThrough(std::uint64_t count, Reading read) noexcept;

    const std::uint64_t _offset;
    const std::uint64_t _size;
    std::uint64_t _position = 0; // 0 to _size
    const Ref<Mon> _monitor;
    Interfaces::ByteReading* const _bytes; // the wrapped stripe's; null when it doesn't offer them
};

} // namespace Libraries::Files::PDF
