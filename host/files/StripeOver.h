#pragma once

#include <platform/Mem.h>
#include <platform/Stripe.h>
#include <platform/Windows_1252.h>

#include <algorithm>

namespace Host {

// A readable stripe over `Bytes`, which has a `size()` and a `load(position, window)` that moves the
// window to the position, or sets a code and returns false. Elements of one byte are the bytes
// as they are, those of four their Windows-1252 code points. It belongs to one thread at a time.
template <class Bytes, class Element>
class StripeOver : public ::Object,
                   public virtual Interfaces::Stripe,
                   public virtual Interfaces::ShownBytes,
                   public virtual Interfaces::ByteReading {
public:
    // Takes ownership of the bytes. The position is 0.
    explicit StripeOver(Bytes bytes) noexcept : _bytes(std::move(bytes)) {}

    // Interfaces::Stripe. Resizing is not supported.
    std::uint64_t elementSize() const noexcept final { return sizeof(Element); }
    // A short read leaves `ErrOutOfRange` at the end, else the code of `Bytes`.
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept final
    {
        // The parser's case: one element that is in the window.
        const std::uint64_t inWindow = _position - _window.start;
        if (count != 1 || inWindow >= _window.length || area.kind != BufferDesc::Plain)
            return readMany(area, count);
        store(area, 0, _window.bytes[inWindow]);
        ++_position;
        return 1;
    }
    // Not supported: 0 with `ErrNotSupported`.
    std::uint64_t write(BufferDesc&, std::uint64_t, std::uint32_t) noexcept final
    {
        Error::set(ErrNotSupported);
        return 0;
    }
    // That of `Bytes`: in elements.
    std::uint64_t size() const noexcept final { return _bytes.size(); }
    // Stops at the end.
    std::uint64_t seek(std::uint64_t position) noexcept final
    {
        return _position = std::min(position, _bytes.size());
    }
    // The position, in elements.
    std::uint64_t tell() const noexcept final { return _position; }

    // Interfaces::ShownBytes
    ByteRun bytesAround(std::uint64_t position) noexcept final { return fillWindow(position) ? _window : ByteRun(); }

    // Interfaces::ByteReading
    bool hasBytes() const noexcept final { return true; }
    // The bytes as they are, with the codes of `read`.
    std::uint64_t readBytes(void* bytes, std::uint64_t count) noexcept final
    {
        return readRuns(count, [&](std::uint64_t done, const std::uint8_t* run, std::uint64_t length) {
            Mem::copy(run, static_cast<std::uint8_t*>(bytes) + done, length);
        });
    }

protected:
    ~StripeOver() noexcept override = default;
    // What the stripe reads from.
    const Bytes& bytes() const noexcept { return _bytes; }

private:
    static void store(const BufferDesc& area, std::uint64_t index, std::uint8_t byte) noexcept
    {
        Element element;
        if constexpr (sizeof(Element) == 1)
            element = byte;
        else
            element = Libraries::Strings::Encodings::ANSI::Windows_1252::toCodePoint(byte);
        auto* memory = static_cast<unsigned char*>(area.pointer) + area.offset;
        Mem::copy(&element, memory + index * sizeof(Element), sizeof(Element));
    }

    // Out of line, so that the single element doesn't pay for it.
    [[gnu::noinline]] std::uint64_t readMany(BufferDesc& area, std::uint64_t count) noexcept
    {
        if (area.kind != BufferDesc::Plain) {
            Error::set(ErrInvalidArgument);
            return 0;
        }
        return readRuns(count, [&](std::uint64_t done, const std::uint8_t* run, std::uint64_t length) {
            for (std::uint64_t i = 0; i < length; ++i)
                store(area, done + i, run[i]);
        });
    }

    // Hands over the next `count` bytes, a run at a time, each with the number of those before it.
    template <class Taker>
    std::uint64_t readRuns(std::uint64_t count, Taker take) noexcept
    {
        std::uint64_t done = 0;
        while (done < count && fillWindow(_position)) {
            const std::uint64_t inWindow = _position - _window.start;
            const std::uint64_t available = std::min(count - done, _window.length - inWindow);
            take(done, _window.bytes + inWindow, available);
            done += available;
            _position += available;
        }
        return done;
    }

    // Brings the byte at the position into the window.
    bool fillWindow(std::uint64_t position) noexcept
    {
        if (position - _window.start < _window.length)
            return true;
        if (position < _bytes.size())
            return _bytes.load(position, _window);
        Error::set(ErrOutOfRange);
        return false;
    }

    Bytes _bytes;
    ByteRun _window; // never reaches beyond the size
    std::uint64_t _position = 0;
};

} // namespace Host
