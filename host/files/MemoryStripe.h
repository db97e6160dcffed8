#pragma once

#include <host/files/StripeOver.h>

#include <vector>

namespace Host {

// A block of bytes, all of it one window.
class MemoryBytes {
public:
    // Takes ownership of the bytes.
    explicit MemoryBytes(std::vector<std::uint8_t> bytes) noexcept : _bytes(std::move(bytes)) {}

    // In bytes.
    std::uint64_t size() const noexcept { return _bytes.size(); }
    // The window is all of them. True.
    bool load(std::uint64_t, ByteRun& window) noexcept
    {
        window = {_bytes.data(), 0, _bytes.size()};
        return true;
    }

private:
    std::vector<std::uint8_t> _bytes;
};

// A readable stripe over a block of bytes, which it owns. `make<MemoryStripe>(std::move(bytes))`.
template <class Element>
class MemoryStripeOf final : public StripeOver<MemoryBytes, Element> {
public:
    // Takes ownership of the bytes.
    explicit MemoryStripeOf(std::vector<std::uint8_t> bytes) noexcept
        : StripeOver<MemoryBytes, Element>(MemoryBytes(std::move(bytes)))
    {
    }
};

// A PDF file for `Document::create`: elements of 4 bytes, one per byte, its Windows-1252 code point.
using MemoryStripe = MemoryStripeOf<std::uint32_t>;
// Plain bytes, as data to be put into a stream.
using ByteMemoryStripe = MemoryStripeOf<std::uint8_t>;

} // namespace Host
