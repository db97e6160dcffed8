#pragma once

#include <platform/Stripe.h>
#include <platform/Windows_1252.h>

#include <string>

// Reads the elements of a stripe of 4-byte elements one after the other: one at a time by its `read` or, where it
// shows its bytes, from those. It begins where the stripe is. A stripe that is read moves along; one that shows
// its bytes stays where it is until `settle`. In between nobody else may use the stripe.
class ElementReader {
public:
    explicit ElementReader(Interfaces::Stripe& stripe) noexcept;

    // The next element; false when there is none, or none can be had.
    bool next(std::uint32_t& c) noexcept
    {
        if (_byte == _end)
            return nextFromStripe(c);
        c = Libraries::Strings::Encodings::ANSI::Windows_1252::toCodePoint(*_byte++);
        return true;
    }
    // The next `count` elements, asked for at once; false when there aren't so many.
    bool read(std::uint32_t* elements, std::size_t count) noexcept;

    // Whether the position could be reached. Afterwards it is the present one; after a failure the one that was
    // reached.
    bool seek(std::uint64_t position) noexcept;
    std::uint64_t tell() const noexcept { return _shown ? _start + std::uint64_t(_byte - _bytes) : _stripe.tell(); }
    std::uint64_t size() const noexcept { return _stripe.size(); }
    // Whether the stripe shows its bytes, so that looking ahead costs it nothing.
    bool isShown() const noexcept { return _shown; }
    // Lets `count` more elements be read, after which the reader is at its end: what waits for a character
    // must not wait for ever on a stripe that never ends. One that shows its bytes ends where its size says.
    void limit(std::uint64_t count) noexcept { _left = count; }
    // Brings the stripe itself to the present position. False when it can't be reached.
    bool settle() noexcept { return !_shown || _stripe.seek(tell()) == tell(); }

    // The next line without its terminator, which is CR, LF or CR LF, and passes that. At the end of the
    // input the last line, if it has a character, else false. False as well when a read fails before the end,
    // and for a line that is longer than the stripe.
    bool readLine(std::u32string& line) noexcept { return readPieces(line, ~std::size_t(0)); }
    // The same for no more than the first `count` pieces of the line, between blanks; the blank after the last of
    // them is passed and left out.
    bool readPieces(std::u32string& line, std::size_t count) noexcept;

private:
    enum class Got { Character, End, Failure };
    Got tryNext(std::uint32_t& c) noexcept;
    bool nextFromStripe(std::uint32_t& c) noexcept;
    bool passLineFeed() noexcept;
    void show(const ByteRun& run, std::uint64_t position) noexcept;

    Interfaces::Stripe& _stripe;
    Interfaces::ShownBytes* const _shown; // the stripe's bytes; null when it doesn't show them
    const std::uint8_t* _bytes = nullptr; // those that are at hand, with the next one and their end
    const std::uint8_t* _byte = nullptr;
    const std::uint8_t* _end = nullptr;
    std::uint64_t _start = 0; // where they begin
    std::uint64_t _left = ~std::uint64_t(0); // elements that may still be read, where no bytes are shown
};
