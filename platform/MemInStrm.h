#pragma once

#include <platform/Stripe.h>

// A stripe of bytes over a block that it owns, alone or with others; read only. An empty block gives an
// empty stripe.
class EXPORTED MemInStrm final : public Object, public virtual Interfaces::Stripe {
public:
    // Frees a block of so many bytes.
    using Release = void (*)(void* block, std::size_t size);

    // Takes over `size` bytes; `release` is called with them when the stripe dies. Null, with
    // `ErrNullArgument` and nothing released, when block or function is null.
    static Ref<MemInStrm> create(void* block, std::size_t size, Release release) noexcept;

    // As `create`, of what is not null.
    MemInStrm(void* block, std::size_t size, Release release) noexcept
        : _block(static_cast<unsigned char*>(block)), _size(size), _release(release)
    {
    }
    // As `share`, of a stripe that owns its block.
    explicit MemInStrm(Ref<MemInStrm> owner) noexcept
        : _block(owner->_block), _size(owner->_size), _release(nullptr), _owner(std::move(owner))
    {
    }
    ~MemInStrm() noexcept override;

    // Another stripe over the same block, with a position of its own, at 0. The block is released when
    // the last of them dies.
    Ref<MemInStrm> share() noexcept;

    // Interfaces::Stripe. A read takes plain memory alone, `ErrInvalidArgument`, and comes short at the
    // end with `ErrOutOfRange`. Writing and resizing are refused with `ErrNotSupported`. A seek stops at
    // the end.
    std::uint64_t elementSize() const noexcept override { return 1; }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t size() const noexcept override { return _size; }
    std::uint64_t seek(std::uint64_t position) noexcept override;
    std::uint64_t tell() const noexcept override { return _position; }

private:
    unsigned char* const _block;
    const std::size_t _size;
    const Release _release; // null when the block belongs to `_owner`
    const Ref<MemInStrm> _owner;
    std::size_t _position = 0;
};
