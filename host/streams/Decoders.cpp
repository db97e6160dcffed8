#include <host/streams/Decoders.h>

#include <host/base/Characters.h>
#include <platform/ZlibFilter.h>

#include <algorithm>
#include <array>

namespace Host::Decoders {

namespace {

bool isBlank(std::uint8_t c)
{
    return c == 0 || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

// Appends bytes up to a limit.
class Output {
public:
    Output(Bytes& bytes, std::size_t limit) : _bytes(bytes), _limit(limit) {}

    bool put(std::uint8_t byte)
    {
        if (_bytes.size() >= _limit)
            return false;
        _bytes.push_back(byte);
        return true;
    }
    bool put(const std::uint8_t* bytes, std::size_t count)
    {
        const std::size_t fitting = std::min(count, _limit - std::min(_limit, _bytes.size()));
        _bytes.insert(_bytes.end(), bytes, bytes + fitting);
        return fitting == count;
    }

private:
    Bytes& _bytes;
    const std::size_t _limit;
};

// The first `count` - 1 bytes that a group of so many digits of base 85 stands for.
bool putGroup(const std::uint8_t (&digits)[5], int count, Output& output)
{
    std::uint64_t number = 0;
    for (int i = 0; i < 5; ++i)
        number = number * 85 + (i < count ? digits[i] : 84u);
    const std::uint8_t bytes[] = {std::uint8_t(number >> 24), std::uint8_t(number >> 16), std::uint8_t(number >> 8),
        std::uint8_t(number)};
    return output.put(bytes, std::size_t(count) - 1);
}

} // namespace

End ascii85(Input in, std::size_t limit, Bytes& out)
{
    Output output(out, limit);
    std::uint8_t digits[5] = {};
    int count = 0;
    for (const std::uint8_t c : in) {
        if (isBlank(c))
            continue;
        if (c == '~')
            break;
        if (c == 'z' && count == 0) {
            constexpr std::uint8_t zeros[4] = {};
            if (!output.put(zeros, 4))
                return End::TooLong;
            continue;
        }
        if (c < '!' || c > 'u')
            return End::Damaged;
        digits[count++] = std::uint8_t(c - '!');
        if (count < 5)
            continue;
        if (!putGroup(digits, count, output))
            return End::TooLong;
        count = 0;
    }
    if (count == 1)
        return End::Damaged;
    return count == 0 || putGroup(digits, count, output) ? End::Whole : End::TooLong;
}

End asciiHex(Input in, std::size_t limit, Bytes& out)
{
    Output output(out, limit);
    int first = -1;
    for (const std::uint8_t c : in) {
        if (isBlank(c))
            continue;
        if (c == '>')
            break;
        const int digit = hexDigit(c);
        if (digit < 0)
            return End::Damaged;
        if (first < 0)
            first = digit;
        else if (!output.put(std::uint8_t(first * 16 + digit)))
            return End::TooLong;
        else
            first = -1;
    }
    return first < 0 || output.put(std::uint8_t(first * 16)) ? End::Whole : End::TooLong;
}

End runLength(Input in, std::size_t limit, Bytes& out)
{
    constexpr std::uint8_t endOfData = 128;
    Output output(out, limit);
    for (std::size_t i = 0; i < in.size() && in[i] != endOfData;) {
        const std::size_t length = in[i++];
        const std::size_t taken = length < endOfData ? length + 1 : 1;
        const std::size_t there = std::min(taken, in.size() - i);
        if (length < endOfData && !output.put(in.data() + i, there))
            return End::TooLong;
        for (std::size_t n = 0; length > endOfData && there > 0 && n < 257 - length; ++n)
            if (!output.put(in[i]))
                return End::TooLong;
        if (there < taken)
            return End::Damaged;
        i += taken;
    }
    return End::Whole;
}

namespace {

// The strings that codes stand for: each is the string of a code before it and one byte more.
class LzwTable {
public:
    static constexpr unsigned clear = 256;
    static constexpr unsigned endOfData = 257;
    static constexpr unsigned first = 258;
    static constexpr unsigned maxSize = 4096;

    LzwTable()
    {
        for (unsigned i = 0; i < first; ++i)
            _entries[i] = {0, 1, std::uint8_t(i), std::uint8_t(i)};
    }

    unsigned size() const { return _size; }
    void reset() { _size = first; }
    // The string of `code`, and that of the code that comes next: the string `previous`, and its own first byte.
    bool put(unsigned code, unsigned previous, Output& output)
    {
        if (_size < maxSize && previous < maxSize) {
            const std::uint8_t last = _entries[code < _size ? code : previous].firstByte;
            const Entry& before = _entries[previous];
            _entries[_size++] = {std::uint16_t(previous), std::uint16_t(before.length + 1), before.firstByte, last};
        }
        std::uint8_t text[maxSize];
        const std::size_t length = _entries[code].length;
        for (std::size_t i = length, at = code; i-- > 0; at = _entries[at].previous)
            text[i] = _entries[at].lastByte;
        return output.put(text, length);
    }

private:
    struct Entry {
        std::uint16_t previous;
        std::uint16_t length;
        std::uint8_t firstByte;
        std::uint8_t lastByte;
    };
    std::array<Entry, maxSize> _entries;
    unsigned _size = first;
};

} // namespace

End lzw(Input in, bool isEarly, std::size_t limit, Bytes& out)
{
    Output output(out, limit);
    LzwTable table;
    unsigned previous = LzwTable::maxSize; // none
    unsigned width = 9;
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const std::uint8_t byte : in) {
        bits = bits << 8 | byte;
        bitCount += 8;
        if (bitCount < width)
            continue;
        bitCount -= width;
        const unsigned code = bits >> bitCount & ((1u << width) - 1);
        if (code == LzwTable::endOfData)
            return End::Whole;
        if (code == LzwTable::clear) {
            table.reset();
            previous = LzwTable::maxSize;
            width = 9;
            continue;
        }
        const bool isNext = code == table.size() && previous < LzwTable::maxSize && code < LzwTable::maxSize;
        if (code >= table.size() && !isNext)
            return End::Damaged;
        if (!table.put(code, previous, output))
            return End::TooLong;
        previous = code;
        const unsigned next = table.size() + (isEarly ? 1 : 0);
        width = next >= 2048 ? 12 : next >= 1024 ? 11 : next >= 512 ? 10 : 9;
    }
    return End::Whole;
}

End flate(Input in, std::size_t limit, Bytes& out)
{
    const Ref<BlockFilter> filter = ZlibFilter::createDecompressorStream();
    if (!filter)
        return End::Damaged;
    Output output(out, limit);
    Bytes block(65536);
    const std::uint8_t* next = in.data();
    std::size_t left = in.size();
    while (left > 0) {
        std::size_t consumed = 0;
        std::size_t produced = 0;
        const bool isGood = filter->process(next, left, block.data(), block.size(), &consumed, &produced);
        if (!output.put(block.data(), produced))
            return End::TooLong;
        if (!isGood)
            return End::Damaged;
        if (consumed == 0 && produced == 0)
            return End::Whole;
        next += consumed;
        left -= consumed;
    }
    for (int state = 1; state == 1;) {
        std::size_t produced = 0;
        state = filter->flush(block.data(), block.size(), &produced);
        if (!output.put(block.data(), produced))
            return End::TooLong;
        if (state == 2)
            return End::Damaged;
    }
    return End::Whole;
}

} // namespace Host::Decoders
