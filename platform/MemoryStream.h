#pragma once

#include <platform/Stripe.h>

// A growing stripe of bytes in memory that can be written and read back.
class EXPORTED MemoryStream final : public Object, public virtual Interfaces::Stripe {
public:
    // `size` bytes of zero to begin with, in elements of `elementSize` bytes, which must be 1: null
    // with `ErrNotSupported` otherwise.
    static Ref<MemoryStream> create(std::size_t size, std::size_t elementSize) noexcept;

    MemoryStream() noexcept = default;
    ~MemoryStream() noexcept override;

    // The bytes written so far; null when there is no memory yet. Valid until the next write, append, resize, room
    // or fit.
    const unsigned char* data() const noexcept { return _block; }
    // Room for `count` bytes at the present position, to be filled, never null, and the taking over of as many of
    // them as were, at most those that `room` was asked for; `append` without a copy.
    unsigned char* room(std::size_t count) noexcept;
    void extend(std::size_t count) noexcept;
    // Gives back memory beyond what was written.
    void fit() noexcept;
    // Writes at the present position, which moves past what was written.
    void append(const void* bytes, std::size_t count) noexcept;

    // Interfaces::Stripe. A read or write takes plain memory alone, `ErrInvalidArgument`; a read comes
    // short at the end with `ErrOutOfRange`. A seek stops at the end; a write at the end grows the stripe.
    std::uint64_t elementSize() const noexcept override { return 1; }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t size() const noexcept override { return _size; }
    std::uint64_t capacity() const noexcept override { return _capacity; }
    std::uint64_t limit() const noexcept override { return ~std::uint64_t(0); }
    std::uint64_t resize(std::uint64_t count) noexcept override;
    std::uint64_t seek(std::uint64_t position) noexcept override;
    std::uint64_t tell() const noexcept override { return _position; }

private:
    void reserve(std::size_t needed) noexcept;

    unsigned char* _block = nullptr;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
    std::size_t _position = 0;
};
