#include <values/NumberText.h>

#include <values/KindCast.h>

#include <limits>

namespace Libraries::Files::PDF {

namespace {

constexpr std::uint64_t maxPositive = std::numeric_limits<std::int64_t>::max();
constexpr std::size_t maxZeros = std::numeric_limits<std::uint8_t>::max();
constexpr std::size_t maxSafeDigits = 18; // that no 64 bits overflow with

// The number of the digits at the front, which are taken away. None when they are not written as a number is: with
// a digit, and without a zero in front.
bool takeOrdinary(std::u32string_view& text, std::uint64_t& number)
{
    std::size_t count = 0;
    number = 0;
    for (; count < text.size() && text[count] - U'0' <= 9; ++count)
        number = number * 10 + (text[count] - U'0');
    const bool isOrdinary = count > 0 && count <= maxSafeDigits && (count == 1 || text[0] != '0');
    text.remove_prefix(count);
    return isOrdinary;
}

// A number as most are: neither a sign nor anything else that a spelling would have to tell. Null for any other.
Ref<NumberObj> ordinaryNumber(std::u32string_view word)
{
    std::uint64_t whole = 0;
    std::uint64_t fraction = 0;
    if (!takeOrdinary(word, whole))
        return nullptr;
    if (!word.empty()) {
        if (word[0] != '.')
            return nullptr;
        word.remove_prefix(1);
        if (!takeOrdinary(word, fraction) || fraction == 0 || !word.empty())
            return nullptr;
    }
    return make<NumberObj>(static_cast<std::int64_t>(whole), fraction);
}

// One side of the point, as a whole number.
struct Side {
    char32_t sign = 0; // 0 for none
    std::size_t digits = 0;
    std::size_t zeros = 0; // leading ones among them
    std::uint64_t value = 0; // without the sign

    std::int64_t signedValue() const { return static_cast<std::int64_t>(sign == '-' ? 0 - value : value); }
};

// False when a character is no digit, or the number is too large for 64 bits with a sign.
bool read(std::u32string_view text, Side& side)
{
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        side.sign = text[0];
        text.remove_prefix(1);
    }
    const std::uint64_t limit = side.sign == '-' ? maxPositive + 1 : maxPositive;
    side.digits = text.size();
    for (const char32_t c : text) {
        const std::uint32_t digit = c - U'0';
        if (digit > 9)
            return false;
        side.zeros += side.value == 0 && digit == 0;
        if (text.size() > maxSafeDigits && side.value > (limit - digit) / 10)
            return false;
        side.value = side.value * 10 + digit;
    }
    return true;
}

void appendZeros(std::size_t count, MemOutStrm& text)
{
    std::fill_n(text.grow(count), count, U'0');
}

} // namespace

Ref<NumberObj> numberFrom(std::u32string_view word) noexcept
{
    if (Ref<NumberObj> number = ordinaryNumber(word))
        return number;
    using Spelling = NumberObj::Spelling;
    const std::size_t point = word.find(U'.');
    const bool hasPoint = point != word.npos;
    Side whole;
    Side fraction;
    if (!read(word.substr(0, point), whole) || (hasPoint && !read(word.substr(point + 1), fraction)))
        return nullptr;
    const bool isZero = whole.value == 0;
    const std::size_t wholeZeros = whole.zeros - (isZero && whole.digits > 0 ? 1 : 0);
    const auto fracPart = static_cast<std::uint64_t>(fraction.signedValue());
    if (fraction.sign || std::max(wholeZeros, fraction.zeros) > maxZeros)
        return make<WordNumberObj>(whole.signedValue(), fracPart, ::String::create(word));
    Spelling spelling;
    spelling.wholeZeros = static_cast<std::uint8_t>(wholeZeros);
    spelling.fractionZeros = static_cast<std::uint8_t>(fraction.zeros);
    if (whole.sign == '-' && isZero)
        spelling.flags |= Spelling::Minus;
    if (whole.sign == '+')
        spelling.flags |= Spelling::Plus;
    if (hasPoint && fraction.digits == 0)
        spelling.flags |= Spelling::Point;
    if (whole.digits == 0)
        spelling.flags |= Spelling::NoDigits;
    return make<NumberObj>(whole.signedValue(), fracPart, spelling);
}

const NumberObj* spelledNumber(const Number& number) noexcept
{
    const NumberObj* own = exactly<NumberObj>(number);
    return own ? own : exactly<WordNumberObj>(number);
}

Ref<::String> wordOf(const NumberObj& number) noexcept
{
    const bool hasWord = number.spelling().has(NumberObj::Spelling::Word);
    return hasWord ? static_cast<const WordNumberObj&>(number).word() : nullptr;
}

Ref<NumberObj> copyExactly(const Number& number) noexcept
{
    const NumberObj* own = spelledNumber(number);
    if (Ref<::String> word = own ? wordOf(*own) : nullptr)
        return make<WordNumberObj>(own->intPart(), own->fracPart(), std::move(word));
    return make<NumberObj>(number.intPart(), number.fracPart(), own ? own->spelling() : NumberObj::Spelling());
}

void appendPlainly(const Number& number, MemOutStrm& text) noexcept
{
    text.appendNumber(number.intPart());
    if (number.fracPart() != 0) {
        text.append('.');
        text.appendNumber(number.fracPart());
    }
}

void appendExactly(const Number& number, MemOutStrm& text) noexcept
{
    using Spelling = NumberObj::Spelling;
    const NumberObj* own = spelledNumber(number);
    const Spelling spelling = own ? own->spelling() : Spelling();
    if (spelling == Spelling())
        return appendPlainly(number, text);
    if (const Ref<::String> word = wordOf(*own))
        return text.append(*word);
    if (own->intPart() < 0 || spelling.has(Spelling::Minus))
        text.append('-');
    else if (spelling.has(Spelling::Plus))
        text.append('+');
    appendZeros(spelling.wholeZeros, text);
    const auto whole = static_cast<std::uint64_t>(own->intPart());
    if (!spelling.has(Spelling::NoDigits))
        text.appendNumber(own->intPart() < 0 ? 0 - whole : whole);
    if (own->fracPart() != 0 || spelling.fractionZeros != 0 || spelling.has(Spelling::Point))
        text.append('.');
    appendZeros(spelling.fractionZeros, text);
    if (own->fracPart() != 0)
        text.appendNumber(own->fracPart());
}

} // namespace Libraries::Files::PDF
