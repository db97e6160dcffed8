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

// The characters of a text, whatever holds them.
struct StringCharacters {
    const String& text;
    std::size_t length() const { return text.length(); }
    unsigned int operator[](std::size_t index) const { return text.charAt(index); }
};
struct ViewCharacters {
    std::u32string_view text;
    std::size_t length() const { return text.size(); }
    unsigned int operator[](std::size_t index) const { return text[index]; }
};

// The number that the digits from `start` to the end make; false when one is none, or beyond `limit`.
template <class Characters>
bool parse(const Characters& text, std::size_t start, std::size_t base, unsigned long long limit,
    unsigned long long& out)
{
    unsigned long long number = 0;
    for (std::size_t i = start; i < text.length(); ++i) {
        const unsigned int digit = digitValue(text[i]);
        if (digit >= base || number > (limit - digit) / base)
            return false;
        number = number * base + digit;
    }
    out = number;
    return true;
}

template <class Characters, class Unsigned>
bool parseUnsigned(const Characters& text, Unsigned* out, std::size_t base)
{
    unsigned long long number = 0;
    if (text.length() == 0 || !parse(text, 0, base, std::numeric_limits<Unsigned>::max(), number))
        return false;
    *out = static_cast<Unsigned>(number);
    return true;
}

template <class Characters>
bool parseSigned(const Characters& text, long long* out)
{
    const bool negative = text.length() > 0 && text[0] == '-';
    const std::size_t start = negative || (text.length() > 0 && text[0] == '+') ? 1 : 0;
    const unsigned long long limit = std::numeric_limits<long long>::max();
    unsigned long long number = 0;
    if (!parse(text, start, 10, negative ? limit + 1 : limit, number))
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
    return text && parseUnsigned(StringCharacters{*text}, out, 10);
}

bool StrConv::num(const Ref<String>& text, unsigned long long* out, const Ref<String>&) noexcept
{
    return text && parseUnsigned(StringCharacters{*text}, out, 10);
}

bool StrConv::num(const Ref<String>& text, long long* out, const Ref<String>&) noexcept
{
    return text && parseSigned(StringCharacters{*text}, out);
}

bool StrConv::num(const Ref<String>& text, unsigned int* out, std::size_t base, const Ref<String>&) noexcept
{
    return text && isBase(base) && parseUnsigned(StringCharacters{*text}, out, base);
}

bool StrConv::num(std::u32string_view text, unsigned int* out) noexcept
{
    return parseUnsigned(ViewCharacters{text}, out, 10);
}

bool StrConv::num(std::u32string_view text, unsigned long long* out) noexcept
{
    return parseUnsigned(ViewCharacters{text}, out, 10);
}

bool StrConv::num(std::u32string_view text, long long* out) noexcept
{
    return parseSigned(ViewCharacters{text}, out);
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
