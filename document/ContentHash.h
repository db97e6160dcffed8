#pragma once

#include <platform/Windows_1252.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace Libraries::Files::PDF {

// A hash of what goes into a file, for identifiers: different files have different ones, for all that happens by
// chance. It is no protection against intent.
class ContentHash {
public:
    void add(const std::uint8_t* bytes, std::uint64_t count) noexcept
    {
        while (count != 0 && _filled != 0)
            addByte(*bytes++), --count;
        for (; count >= sizeof(std::uint64_t); count -= sizeof(std::uint64_t), bytes += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes, sizeof(word));
            mix(word);
        }
        while (count-- != 0)
            addByte(*bytes++);
    }
    // The same of the bytes that the elements stand for.
    void add(const std::uint32_t* elements, std::uint64_t count) noexcept
    {
        for (; count != 0; --count)
            addByte(Libraries::Strings::Encodings::ANSI::Windows_1252::toByte(*elements++));
    }
    std::array<std::uint8_t, 16> value() const noexcept
    {
        ContentHash end = *this;
        end.mix(_pending);
        end.mix(_filled);
        end.mix(0);
        return std::bit_cast<std::array<std::uint8_t, 16>>(end._lanes);
    }

private:
    void addByte(std::uint8_t byte) noexcept
    {
        _pending |= std::uint64_t(byte) << 8 * _filled;
        if (++_filled < sizeof(_pending))
            return;
        mix(_pending);
        _pending = 0;
        _filled = 0;
    }
    // Two lanes that differ in all: odd multipliers carry upwards, shifts downwards.
    void mix(std::uint64_t word) noexcept
    {
        _lanes[0] = (_lanes[0] ^ word) * 0x9E3779B97F4A7C15;
        _lanes[0] ^= _lanes[0] >> 32;
        _lanes[1] = (std::rotl(_lanes[1], 27) + word) * 0xC2B2AE3D27D4EB4F;
        _lanes[1] ^= _lanes[1] >> 29;
    }

    std::array<std::uint64_t, 2> _lanes{};
    std::uint64_t _pending = 0; // bytes that don't make a word yet
    std::uint64_t _filled = 0;  // how many these are
};

} // namespace Libraries::Files::PDF
