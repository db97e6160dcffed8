#include <stripes/ByteElements.h>

#include <platform/Mem.h>
#include <platform/MemoryStream.h>
#include <platform/Reporter.h>
#include <platform/Windows_1252.h>
#include <stripes/ElementSizeStripe.h>

#include <algorithm>

namespace Libraries::Files::PDF {

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;

constexpr std::uint64_t blockSize = 4096; // the bytes that are converted at a time
constexpr std::uint64_t maxElements = ~std::uint64_t(0) / sizeof(std::uint32_t); // that can be widened

unsigned char* memoryOf(const BufferDesc& area)
{
    return static_cast<unsigned char*>(area.pointer) + area.offset;
}

std::uint32_t elementAt(const unsigned char* elements, std::uint64_t index)
{
    std::uint32_t element;
    Mem::copy(elements + index * sizeof element, &element, sizeof element);
    return element;
}

bool haveBytes(const unsigned char* elements, std::uint64_t count)
{
    for (std::uint64_t i = 0; i < count; ++i)
        if (!Windows_1252::hasByte(elementAt(elements, i)))
            return false;
    return true;
}

} // namespace

std::uint64_t ByteElements::readBytes(void* bytes, std::uint64_t count) noexcept
{
    BufferDesc area = BufferDesc::plain(bytes);
    return _bytes->read(area, count, waitForever);
}

std::uint64_t ByteElements::read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    if (_wide) {
        BufferDesc copy = area;
        return _wide->read(copy, count, timeout);
    }
    if (area.kind != BufferDesc::Plain)
        return moveNothing(ErrInvalidArgument);
    std::uint64_t done = 0;
    for (std::uint64_t asked = 0, got = 0; done < count && got == asked;) {
        std::uint8_t bytes[blockSize];
        asked = std::min(count - done, blockSize);
        got = readBytes(bytes, asked);
        for (std::uint64_t i = 0; i < got; ++i) {
            const std::uint32_t element = Windows_1252::toCodePoint(bytes[i]);
            Mem::copy(&element, memoryOf(area) + (done + i) * sizeof element, sizeof element);
        }
        done += got;
    }
    return done;
}

std::uint64_t ByteElements::write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    if (!_wide && area.kind == BufferDesc::Plain && !haveBytes(memoryOf(area), count))
        widen();
    if (_wide || area.kind != BufferDesc::Plain) {
        BufferDesc copy = area;
        return held().write(copy, count, timeout);
    }
    std::uint64_t done = 0;
    for (std::uint64_t asked = 0, got = 0; done < count && got == asked; done += got) {
        std::uint8_t bytes[blockSize];
        asked = std::min(count - done, blockSize);
        for (std::uint64_t i = 0; i < asked; ++i)
            bytes[i] = Windows_1252::toByte(elementAt(memoryOf(area), done + i));
        BufferDesc block = BufferDesc::plain(bytes);
        got = _bytes->write(block, asked, timeout);
    }
    return done;
}

std::uint64_t ByteElements::limit() const noexcept
{
    return std::min(held().limit(), maxElements);
}

std::uint64_t ByteElements::resize(std::uint64_t count) noexcept
{
    if (count <= maxElements)
        return held().resize(count);
    Error::set(ErrOutOfRange);
    return size();
}

// A stripe that can't be written stays as it is.
void ByteElements::widen() noexcept
{
    if (!_bytes.cast<MemoryStream>())
        return;
    const std::uint64_t position = tell();
    Ref<Interfaces::Stripe> wide = Adapters::ElementSize::Stripe::create(MemoryStream::create(0, 1));
    _bytes->seek(0);
    for (std::uint64_t left = size(); left != 0;) {
        std::uint32_t elements[blockSize];
        BufferDesc block = BufferDesc::plain(elements);
        const std::uint64_t got = read(block, std::min(left, blockSize), waitForever);
        wide->write(block, got, waitForever);
        left -= got;
    }
    wide->seek(position);
    _wide = std::move(wide);
    _bytes = nullptr;
}

} // namespace Libraries::Files::PDF
