#include <values/Exact.h>

#include <platform/Windows_1252.h>
#include <values/KindCast.h>
#include <values/NumberText.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <span>
#include <string>

namespace Libraries::Files::PDF {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Libraries::Strings::Encodings::ANSI::Windows_1252;

bool isDigit(char32_t c)
{
    return c >= '0' && c <= '9';
}

// The digits of a word without those that say nothing; none when it is no number of the format.
std::optional<std::string> decimalOf(std::u32string_view word)
{
    const bool isNegative = !word.empty() && word[0] == '-';
    word.remove_prefix(isNegative || (!word.empty() && word[0] == '+') ? 1 : 0);
    const std::size_t point = std::min(word.find(U'.'), word.size());
    std::string whole(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(point));
    word.remove_prefix(std::min(point + 1, word.size()));
    std::string fraction(word.begin(), word.end());
    if (!std::all_of(whole.begin(), whole.end(), isDigit) || !std::all_of(fraction.begin(), fraction.end(), isDigit))
        return {};
    whole.erase(0, whole.find_first_not_of('0'));
    fraction.erase(fraction.find_last_not_of('0') + 1);
    const bool isZero = whole.empty() && fraction.empty();
    return (isNegative && !isZero ? "-" : "") + (whole.empty() ? "0" : whole)
        + (fraction.empty() ? "" : "." + fraction);
}

std::optional<std::string> decimalOf(const Number& number)
{
    MemOutStrm text;
    appendExactly(number, text);
    return decimalOf(std::u32string(text.data(), text.data() + text.size()));
}

// The number as a quotient of two that a floating-point number holds, which makes it the nearest; none for those with
// more digits, and for words.
std::optional<double> exactQuotient(const Number& number)
{
    using Spelling = NumberObj::Spelling;
    constexpr std::uint64_t most = std::uint64_t(1) << 53;
    const NumberObj* own = spelledNumber(number);
    const Spelling spelling = own ? own->spelling() : Spelling();
    const std::int64_t whole = number.intPart();
    std::uint64_t part = static_cast<std::uint64_t>(whole), unit = 1;
    part = whole < 0 ? 0 - part : part;
    if (spelling.has(Spelling::Word))
        return {};
    int digits = spelling.fractionZeros;
    for (std::uint64_t rest = number.fracPart(); rest != 0; rest /= 10)
        ++digits;
    if (digits > 15)
        return {};
    for (; digits > 0 && part < most; --digits) {
        part *= 10;
        unit *= 10;
    }
    if (digits > 0 || part >= most - number.fracPart())
        return {};
    const double quotient = double(part + number.fracPart()) / double(unit);
    const bool isNegative = whole < 0 || spelling.has(Spelling::Minus);
    return isNegative && quotient != 0 ? -quotient : quotient;
}

// What the character after a backslash stands for, if it isn't a digit; those that aren't listed stand for
// themselves.
std::uint8_t escaped(std::uint8_t c)
{
    switch (c) {
    case 'b': return '\b';
    case 'f': return '\f';
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    default: return c;
    }
}

// The source of a literal string by the rules of the format.
class SourceReader {
public:
    explicit SourceReader(const TConstArray<std::uint8_t>& source) noexcept
        : _next(source.data() + 1), _end(source.data() + source.size())
    {
    }

    Bytes read()
    {
        for (std::uint64_t depth = 0; _next != _end;) {
            const std::uint8_t c = *_next++;
            if (c == ')' && depth-- == 0)
                break;
            depth += c == '(';
            if (c == '\\')
                readEscape();
            else
                _bytes.push_back(c);
        }
        return std::move(_bytes);
    }
    // What this library reads as a part of the string although the format has its end before.
    std::span<const std::uint8_t> rest() const { return {_next, _end}; }

private:
    bool isOctalDigit() const { return _next != _end && *_next >= '0' && *_next <= '7'; }
    bool pass(std::uint8_t c)
    {
        const bool isThere = _next != _end && *_next == c;
        _next += isThere;
        return isThere;
    }
    // After the backslash.
    void readEscape()
    {
        if (isOctalDigit()) {
            unsigned value = 0;
            for (int digits = 0; digits < 3 && isOctalDigit(); ++digits)
                value = value * 8 + (*_next++ - '0');
            _bytes.push_back(static_cast<std::uint8_t>(value));
        } else if (pass('\r')) {
            pass('\n'); // the line goes on
        } else if (_next != _end && !pass('\n')) {
            _bytes.push_back(escaped(*_next++));
        }
    }

    const std::uint8_t* _next;
    const std::uint8_t* const _end;
    Bytes _bytes;
};

std::optional<Bytes> bytesOfText(const ::String& text)
{
    Bytes bytes;
    bool hasBytes = true;
    text.forEach([&](std::uint32_t c) {
        hasBytes = hasBytes && (c <= 0xFF || Windows_1252::hasByte(c));
        bytes.push_back(c <= 0xFF ? static_cast<std::uint8_t>(c) : Windows_1252::toByte(c));
    });
    return hasBytes ? std::optional(std::move(bytes)) : std::nullopt;
}

template <class Array>
bool isSameData(const Array* a, const Array* b)
{
    return a == b || (a && b && a->size() == b->size() && Mem::equal(a->data(), b->data(), a->size()));
}

bool isSameText(const ::String* a, const ::String* b)
{
    return a == b || (a && b && a->compare(*b) == 0);
}

bool isSame(const Boolean& a, const Boolean& b)
{
    return a.value() == b.value();
}

bool isSame(const Number& a, const Number& b)
{
    using Spelling = NumberObj::Spelling;
    if (a.intPart() != b.intPart() || a.fracPart() != b.fracPart())
        return false;
    const NumberObj* own = spelledNumber(a);
    const NumberObj* other = spelledNumber(b);
    const Spelling spelling = own ? own->spelling() : Spelling();
    if (spelling != (other ? other->spelling() : Spelling()))
        return false;
    return !spelling.has(Spelling::Word) || isSameText(wordOf(*own).get(), wordOf(*other).get());
}

bool isSame(const Name& a, const Name& b)
{
    return isSameText(a.value().get(), b.value().get());
}

// The text that this library reads where it was written as bytes: those from 128 to 159 stand for characters above,
// or, the undefined ones, for 0.
std::u32string readBack(const ::String& text)
{
    using Libraries::Strings::Encodings::ANSI::upperControls;
    constexpr std::uint32_t first = 128;
    std::u32string result;
    text.forEach([&result](std::uint32_t c) {
        result += char32_t(c >= first && c < first + upperControls.size() ? upperControls[c - first] : c);
    });
    return result;
}

// The same source, or another spelling of the same.
bool isSameSource(const StringObj& a, const StringObj& b)
{
    const Ref<TConstArray<std::uint8_t>> source = a.source();
    const Ref<TConstArray<std::uint8_t>> otherSource = b.source();
    if (isSameData(source.get(), otherSource.get()))
        return true;
    SourceReader own(*source);
    SourceReader other(*otherSource);
    return isSameText(a.value().get(), b.value().get()) && own.read() == other.read()
        && std::ranges::equal(own.rest(), other.rest());
}

// Two texts of which not both have a source.
bool isSameWhenWritten(const String& a, const String& b)
{
    return readBack(*a.value()) == readBack(*b.value()) && exactBytes(a) == exactBytes(b);
}

bool isSame(const String& a, const String& b)
{
    const StringObj* own = exactly<StringObj>(a);
    const StringObj* other = exactly<StringObj>(b);
    const bool hasSource = own && own->hasSource();
    const bool hasOtherSource = other && other->hasSource();
    if (hasSource && hasOtherSource)
        return isSameSource(*own, *other);
    const Ref<::String> text = a.value();
    const Ref<::String> otherText = b.value();
    if (text && otherText)
        return (!hasSource && !hasOtherSource && text->compare(*otherText) == 0) || isSameWhenWritten(a, b);
    return !text && !otherText && isSameData(a.data().get(), b.data().get())
        && (own && own->hasOddDigit()) == (other && other->hasOddDigit());
}

bool isSame(const ObjectRef& a, const ObjectRef& b)
{
    return a.id() == b.id() && a.generation() == b.generation();
}

bool isSame(const Array& a, const Array& b)
{
    const std::uint64_t size = a.size();
    if (size != b.size())
        return false;
    std::uint64_t i = 0;
    while (i < size && isSameExactly(a.get(i), b.get(i)))
        ++i;
    return i == size;
}

bool isSameEntries(const EntryMap& a, const EntryMap& b)
{
    return a.size() == b.size() && a.forEach([&b](const Ref<::String>& key, const Ref<Value>& value) {
        const Ref<Value>* other = b.find(*key);
        return other && isSameExactly(value, *other);
    });
}

bool isSame(const Dictionary& a, const Dictionary& b)
{
    const DictionaryObj* own = exactly<DictionaryObj>(a);
    const DictionaryObj* other = exactly<DictionaryObj>(b);
    if (own && other)
        return isSameEntries(own->entries(), other->entries());
    const auto keys = a.keys();
    const auto otherKeys = b.keys();
    return keys && otherKeys && keys->size() == otherKeys->size()
        && std::all_of(keys->begin(), keys->end(),
            [&](const Ref<::String>& key) { return isSameExactly(a.find(key), b.find(key)); });
}

bool isSame(const Stream& a, const Stream& b)
{
    return isSameExactly(a.dict(), b.dict());
}

template <class Kind>
bool isSameAs(Value& a, Value& b)
{
    const Kind* own = castKind<Kind>(a);
    const Kind* other = castKind<Kind>(b);
    return own && other && isSame(*own, *other);
}

} // namespace

Ref<::String> exactDecimal(const Number& number) noexcept
{
    const std::optional<std::string> decimal = decimalOf(number);
    return decimal ? ::String::create(decimal->data(), 0, decimal->size()) : nullptr;
}

double exactDouble(const Number& number) noexcept
{
    if (const std::optional<double> quotient = exactQuotient(number))
        return *quotient;
    const std::optional<std::string> decimal = decimalOf(number);
    if (!decimal)
        return std::numeric_limits<double>::quiet_NaN();
    double result = 0;
    if (std::from_chars(decimal->data(), decimal->data() + decimal->size(), result).ec == std::errc())
        return result;
    // Too near to zero, as nothing that two 64-bit numbers hold is too large.
    return 0;
}

std::optional<std::vector<std::uint8_t>> exactBytes(const String& string) noexcept
{
    const StringObj* own = exactly<StringObj>(string);
    if (own && own->hasSource())
        return SourceReader(*own->source()).read();
    if (const Ref<::String> text = string.value())
        return bytesOfText(*text);
    const Ref<TConstArray<std::uint8_t>> data = string.data();
    if (!data)
        return {};
    Bytes bytes(data->data(), data->data() + data->size());
    if (own && own->hasOddDigit())
        bytes.back() = static_cast<std::uint8_t>(bytes.back() / 10 << 4);
    return bytes;
}

bool isSameExactly(const Ref<Value>& a, const Ref<Value>& b) noexcept
{
    if (!a || !b || a->type() != b->type())
        return false;
    switch (a->type()) {
    case Value::Type::Name: return isSameAs<Name>(*a, *b);
    case Value::Type::Boolean: return isSameAs<Boolean>(*a, *b);
    case Value::Type::Number: return isSameAs<Number>(*a, *b);
    case Value::Type::String: return isSameAs<String>(*a, *b);
    case Value::Type::ObjectRef: return isSameAs<ObjectRef>(*a, *b);
    case Value::Type::Dictionary: return isSameAs<Dictionary>(*a, *b);
    case Value::Type::Stream: return isSameAs<Stream>(*a, *b);
    case Value::Type::Array: return isSameAs<Array>(*a, *b);
    case Value::Type::Null: return true;
    case Value::Type::Invalid: break;
    }
    return false;
}

} // namespace Libraries::Files::PDF
