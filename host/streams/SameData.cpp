#include <host/streams/SameData.h>

#include <platform/Mem.h>
#include <platform/Windows_1252.h>

#include <algorithm>
#include <vector>

namespace Host {

namespace {

constexpr std::uint64_t blockSize = 65536;

// One of the two, from its beginning. It is put back to where it was.
class Reading {
public:
    Reading(Interfaces::Stripe& stripe, bool asBytes) noexcept
        : _stripe(stripe), _bytes(asBytes ? byteReadingOf(stripe) : nullptr), _position(stripe.tell()),
          _block(std::min(stripe.size(), blockSize) * (_bytes ? 1 : sizeof(std::uint32_t))),
          _isAtStart(stripe.seek(0) == 0)
    {
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() noexcept { _stripe.seek(_position); }

    // The next elements, or bytes; null when they can't be had.
    const std::uint8_t* next(std::uint64_t count) noexcept
    {
        BufferDesc area = BufferDesc::plain(_block.data());
        const std::uint64_t got
            = _bytes ? _bytes->readBytes(_block.data(), count) : _stripe.read(area, count, waitForever);
        return _isAtStart && got == count ? _block.data() : nullptr;
    }

private:
    Interfaces::Stripe& _stripe;
    Interfaces::ByteReading* const _bytes; // null for elements
    const std::uint64_t _position;
    std::vector<std::uint8_t> _block;
    const bool _isAtStart;
};

} // namespace

bool haveSameData(const Ref<Interfaces::Stripe>& a, const Ref<Interfaces::Stripe>& b) noexcept
{
    if (!a || !b || a->size() != b->size() || a->elementSize() != sizeof(std::uint32_t)
        || b->elementSize() != sizeof(std::uint32_t))
        return false;
    const bool asBytes = byteReadingOf(*a) && byteReadingOf(*b);
    const std::uint64_t width = asBytes ? 1 : sizeof(std::uint32_t);
    Reading left(*a, asBytes);
    Reading right(*b, asBytes);
    for (std::uint64_t rest = a->size(); rest != 0;) {
        const std::uint64_t count = std::min(rest, blockSize);
        const std::uint8_t* first = left.next(count);
        const std::uint8_t* second = first ? right.next(count) : nullptr;
        if (!second || !Mem::equal(first, second, count * width))
            return false;
        rest -= count;
    }
    return true;
}

} // namespace Host
