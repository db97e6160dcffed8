#include <platform/StrConv.h>

#include <charconv>
#include <cstdint>
#include <limits>

namespace {

constexpr unsigned int noDigit = ~0u;

bool isBase(std::size_t base)
{
    return base >= 2 && base <= 16;
}

// The value of a digit; `noDigit` for what is none.
unsigned int digitValue(unsigned int c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return noDigit;
}

// The number that the digits from `start` to the end make; false when one is none, or beyond `limit`.
// `charAt` gives the characters.
template <class CharAt>
bool parse(CharAt charAt, std::size_t start, std::size_t length, std::size_t base, unsigned long long limit,
    unsigned long long& out)
{
    unsigned long long number = 0;
    for (std::size_t i = start; i < length; ++i) {
        const unsigned int digit = digitValue(charAt(i));
        if (digit >= base || number > (limit - digit) / base)
            return false;
        number = number * base + digit;
    }
    out = number;
    return true;
}

template <class Unsigned>
bool parseUnsigned(const Ref<String>& text, Unsigned* out, std::size_t base)
{
    if (!text || text->isEmpty())
        return false;
    unsigned long long number = 0;
    const auto charAt = [&text](std::size_t index) { return text->charAt(index); };
    if (!parse(charAt, 0, text->length(), base, std::numeric_limits<Unsigned>::max(), number))
        return false;
    *out = static_cast<Unsigned>(number);
    return true;
}

template <class CharAt>
bool parseSigned(CharAt charAt, std::size_t length, long long* out)
{
    const bool negative = length > 0 && charAt(0) == '-';
    const std::size_t start = negative || (length > 0 && charAt(0) == '+') ? 1 : 0;
    const unsigned long long limit = std::numeric_limits<long long>::max();
    unsigned long long number = 0;
    if (!parse(charAt, start, length, 10, negative ? limit + 1 : limit, number))
        return false;
    *out = static_cast<long long>(negative ? 0 - number : number);
    return true;
}

template <class Integer>
Ref<String> decimal(Integer number)
{
    char text[24];
    const auto end = std::to_chars(text, text + sizeof(text), number).ptr;
    return String::create(text, 0, std::size_t(end - text));
}

} // namespace

bool StrConv::num(const Ref<String>& text, unsigned int* out, const Ref<String>&) noexcept
{
    return parseUnsigned(text, out, 10);
}

bool StrConv::num(const Ref<String>& text, unsigned long long* out, const Ref<String>&) noexcept
{
    return parseUnsigned(text, out, 10);
}

bool StrConv::num(const Ref<String>& text, long long* out, const Ref<String>&) noexcept
{
    const auto charAt = [&text](std::size_t index) { return text->charAt(index); };
    return text && parseSigned(charAt, text->length(), out);
}

bool StrConv::num(std::u32string_view text, long long* out) noexcept
{
    const auto charAt = [text](std::size_t index) { return static_cast<unsigned int>(text[index]); };
    return parseSigned(charAt, text.size(), out);
}

bool StrConv::num(const Ref<String>& text, unsigned int* out, std::size_t base, const Ref<String>&) noexcept
{
    return isBase(base) && parseUnsigned(text, out, base);
}

Ref<String> StrConv::str(int number) noexcept
{
    return decimal(number);
}

Ref<String> StrConv::str(unsigned int number) noexcept
{
    return decimal(number);
}

Ref<String> StrConv::str(long number) noexcept
{
    return decimal(number);
}

Ref<String> StrConv::str(unsigned long number) noexcept
{
    return decimal(number);
}

Ref<String> StrConv::str(long long number) noexcept
{
    return decimal(number);
}

Ref<String> StrConv::str(unsigned long long number) noexcept
{
    return decimal(number);
}

Ref<String> StrConv::str(int number, std::size_t base, std::size_t width) noexcept
{
    if (number >= 0)
        return str(static_cast<unsigned long long>(number), base, width);
    if (number >= std::numeric_limits<std::int8_t>::min())
        return str(static_cast<unsigned long long>(static_cast<std::uint8_t>(number)), base, width);
    if (number >= std::numeric_limits<std::int16_t>::min())
        return str(static_cast<unsigned long long>(static_cast<std::uint16_t>(number)), base, width);
    return str(static_cast<unsigned long long>(static_cast<std::uint32_t>(number)), base, width);
}

Ref<String> StrConv::str(unsigned long long number, std::size_t base, std::size_t width) noexcept
{
    if (!isBase(base))
        return nullptr;
    std::string text;
    for (; number != 0 || text.empty(); number /= base)
        text.insert(text.begin(), "0123456789ABCDEF"[number % base]);
    if (text.size() < width)
        text.insert(0, width - text.size(), '0');
    return String::create(text.data(), 0, text.size());
}
