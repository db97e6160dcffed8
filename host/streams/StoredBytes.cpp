#include <host/streams/StoredBytes.h>

#include <host/base/Characters.h>
#include <host/base/ErrorWords.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constexpr std::size_t blockSize = 65536;

// All that a stripe of 4-byte elements holds, as bytes; false when it can't be had.
bool readAll(Interfaces::Stripe& stripe, std::vector<std::uint8_t>& bytes)
{
    const std::uint64_t size = stripe.size();
    if (stripe.elementSize() != sizeof(std::uint32_t) || stripe.seek(0) != 0)
        return false;
    Interfaces::ByteReading* const reading = byteReadingOf(stripe);
    std::vector<std::uint32_t> elements(reading ? 0 : std::min<std::uint64_t>(size, blockSize));
    while (bytes.size() < size) {
        const std::size_t done = bytes.size();
        const std::size_t count = std::min<std::uint64_t>(size - done, blockSize);
        bytes.resize(done + count);
        BufferDesc area = BufferDesc::plain(elements.data());
        if ((reading ? reading->readBytes(bytes.data() + done, count) : stripe.read(area, count, waitForever)) != count)
            return false;
        for (std::size_t i = 0; !reading && i < count; ++i) {
            const int byte = byteOfElement(elements[i]);
            if (byte < 0)
                return false;
            bytes[done + i] = std::uint8_t(byte);
        }
    }
    return true;
}

} // namespace

Result<std::vector<std::uint8_t>> storedBytes(const Ref<Document>& document, const Ref<Stream>& stream) noexcept
{
    if (!document || !stream)
        return codeRefusal(ErrNullArgument);
    const Ref<Interfaces::Stripe> stored = document->streamData(stream, false);
    if (!stored)
        return codeRefusal(Error::get());
    const std::uint64_t position = stored->tell();
    std::vector<std::uint8_t> bytes;
    const bool isRead = readAll(*stored, bytes);
    stored->seek(position);
    if (!isRead)
        return codeRefusal(ErrStreamConvert);
    return bytes;
}

} // namespace Host
