#pragma once

#include <platform/Stripe.h>

namespace Libraries::Adapters::Base {

// A stripe that forwards every operation to the stripe that it wraps, and keeps it alive. It exists
// to be derived from.
class EXPORTED Stripe : public ::Object, public virtual Interfaces::Stripe {
public:
    // `wrapped` must not be null.
    explicit Stripe(Ref<Interfaces::Stripe> wrapped) noexcept : _wrapped(std::move(wrapped)) {}

    // Interfaces::Data
    std::uint64_t elementSize() const noexcept override;
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

protected:
    // The stripe that everything is forwarded to.
    const Ref<Interfaces::Stripe>& wrapped() const noexcept { return _wrapped; }

private:
    const Ref<Interfaces::Stripe> _wrapped;
};

} // namespace Libraries::Adapters::Base
