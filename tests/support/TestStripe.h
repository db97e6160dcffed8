#pragma once

#include <platform/Stripe.h>
#include <platform/Windows_1252.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Tests {

// What a call does that a fault strikes.
enum class Answer {
    Failure, // moves nothing, says so, and leaves `failureCode`
    Nothing, // the same without a code
    Less,    // moves one element less, and says so
    More,    // says that it moved one element more than it was asked
    Pretend, // moves nothing, and says what the caller wants to hear; a size is far beyond the truth
};

// Which operation of a stripe fails, counted from 0 over all that it is asked; none by default.
struct Fault {
    static constexpr std::uint64_t never = ~std::uint64_t(0);
    std::uint64_t read = never;
    std::uint64_t seek = never;
    std::uint64_t size = never;
    std::uint64_t write = never;
    Answer answer = Answer::Failure;
    bool isLasting = false; // strikes all later operations of its kind, too

    // Of `count` elements those that a struck call moves, and what it says when it has moved them.
    std::uint64_t moved(std::uint64_t count) const
    {
        return answer == Answer::More ? count : answer == Answer::Less && count > 0 ? count - 1 : 0;
    }
    std::uint64_t told(std::uint64_t count, std::uint64_t moved) const
    {
        return answer == Answer::Pretend ? count : moved + (answer == Answer::More);
    }
};

// Lets the calls of one kind fail one after another, from the one of number `first` on, until `isReached`
// says that the work ends before that call. How many failed.
template <class Work>
std::uint64_t failOneByOne(std::uint64_t Fault::*kind, std::uint64_t first, Work isReached)
{
    for (std::uint64_t n = 0;; ++n) {
        Fault fault;
        fault.*kind = first + n;
        if (!isReached(fault))
            return n;
    }
}

inline const Libraries::Strings::Encodings::ANSI::Windows_1252& encoding()
{
    static const auto theEncoding = make<Libraries::Strings::Encodings::ANSI::Windows_1252>(true);
    return *theEncoding;
}

// The bytes that characters of a file represent.
inline std::string encodedBytes(const std::vector<std::uint32_t>& elements)
{
    std::string result;
    for (const std::uint32_t element : elements)
        result += static_cast<char>(encoding().byte(element));
    return result;
}

// A file in memory, one element per byte, that fails on demand and leaves `failureCode` then.
class TestStripe : public ::Object, public virtual Interfaces::Stripe {
public:
    static constexpr std::uint32_t failureCode = 0x7777;

    explicit TestStripe(const std::string& bytes, Fault fault = {}, std::uint64_t elementSize = 4)
        : _fault(fault), _elementSize(elementSize)
    {
        for (const char byte : bytes)
            elements.push_back(elementSize == 4 ? encoding().codePoint(std::uint8_t(byte)) : std::uint8_t(byte));
    }

    std::uint64_t elementSize() const noexcept override { return _elementSize; }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept override
    {
        const bool isStruck = strikes(_fault.read);
        if (position > elements.size())
            return 0;
        const std::uint64_t wanted = isStruck ? _fault.moved(count) : count;
        const std::uint64_t got = std::min<std::uint64_t>(wanted, elements.size() - position);
        if (_elementSize == 4)
            std::copy_n(elements.begin() + long(position), got, static_cast<std::uint32_t*>(area.pointer));
        else
            std::copy_n(elements.begin() + long(position), got, static_cast<unsigned char*>(area.pointer));
        position += got;
        ++reads;
        return isStruck ? _fault.told(count, got) : got;
    }
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept override
    {
        const bool isStruck = strikes(_fault.write);
        const std::uint64_t taken = isStruck ? _fault.moved(count) : count;
        const auto* wide = static_cast<const std::uint32_t*>(area.pointer);
        const auto* narrow = static_cast<const unsigned char*>(area.pointer);
        for (std::uint64_t i = 0; i < taken; ++i)
            elements.push_back(_elementSize == 4 ? wide[i] : narrow[i]);
        ++writes;
        return isStruck ? _fault.told(count, taken) : count;
    }
    std::uint64_t size() const noexcept override
    {
        ++sizes;
        if (!strikes(_fault.size))
            return elements.size();
        return _fault.answer == Answer::Pretend ? farTooMuch : _fault.told(0, _fault.moved(elements.size()));
    }
    std::uint64_t seek(std::uint64_t to) noexcept override
    {
        ++seeks;
        if (strikes(_fault.seek))
            switch (_fault.answer) {
            case Answer::Failure: return ~to;
            case Answer::Nothing: return position;
            case Answer::Less: to -= to > 0 ? 1 : 0; break;
            case Answer::More: to += 1; break;
            case Answer::Pretend: return to;
            }
        return position = std::min<std::uint64_t>(to, elements.size());
    }
    std::uint64_t tell() const noexcept override { return position; }

    // The elements as bytes.
    std::string bytes() const { return encodedBytes(elements); }

    std::vector<std::uint32_t> elements;
    std::uint64_t position = 0;
    std::uint64_t reads = 0;
    std::uint64_t writes = 0;
    std::uint64_t seeks = 0;
    mutable std::uint64_t sizes = 0;
    mutable bool hasFailed = false;
    bool isSound = false; // suspends the fault

private:
    static constexpr std::uint64_t farTooMuch = std::uint64_t(1) << 40;

    bool strikes(std::uint64_t& callsLeft) const
    {
        if (isSound || callsLeft == Fault::never || callsLeft-- > 0)
            return false;
        callsLeft = _fault.isLasting ? 0 : Fault::never;
        hasFailed = true;
        if (_fault.answer == Answer::Failure)
            Error::set(failureCode);
        return true;
    }

    mutable Fault _fault;
    const std::uint64_t _elementSize;
};

// The same, which shows its bytes, three at a time.
class ShowingStripe final : public TestStripe, public virtual Interfaces::ShownBytes {
public:
    explicit ShowingStripe(const std::string& bytes, Fault fault = {}) : TestStripe(bytes, fault), _bytes(bytes) {}

    ByteRun bytesAround(std::uint64_t at) noexcept override
    {
        std::uint32_t element = 0;
        if (seek(at) != at || !readElement(*this, element))
            return {};
        const std::uint64_t start = at - at % 3;
        return {reinterpret_cast<const std::uint8_t*>(_bytes.data()) + start, start,
            std::min<std::uint64_t>(3, _bytes.size() - start)};
    }

private:
    const std::string _bytes;
};

// Up to `count` elements from the position of the stripe.
template <class Element = std::uint32_t>
std::vector<Element> readFrom(Interfaces::Stripe& stripe, std::uint64_t count)
{
    std::vector<Element> elements(count, Element(-1));
    BufferDesc area = BufferDesc::plain(elements.data());
    elements.resize(stripe.read(area, count, waitForever));
    return elements;
}

// All that a stripe of 4-byte elements holds, as bytes. The stripe is then where it was: stored data is
// shared with the document.
inline std::string bytesOf(const Ref<Interfaces::Stripe>& stripe)
{
    if (!stripe)
        return "(none)";
    const std::uint64_t position = stripe->tell();
    stripe->seek(0);
    const std::vector<std::uint32_t> elements = readFrom(*stripe, stripe->size());
    stripe->seek(position);
    return encodedBytes(elements);
}

} // namespace Tests
