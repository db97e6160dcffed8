#include "Check.h"
#include "Input.h"

#include <tests/support/TestStripe.h>

#include <platform/CharReader.h>
#include <platform/Heap.h>
#include <platform/Mem.h>
#include <platform/StrConv.h>
#include <platform/StringUtil.h>

#include <charconv>
#include <limits>
#include <optional>

// The target `text`: operations on texts, numbers and lines, compared with what plain texts of characters give.

namespace Fuzz {

namespace {

using Characters = std::u32string;

// A text, and what it must hold.
struct Text {
    Ref<::String> string;
    Characters model;
};

Characters charactersOf(const ::String& string)
{
    Characters result(string.length(), 0);
    string.copy(0, result.size(), reinterpret_cast<unsigned int*>(result.data()));
    return result;
}

void requireSame(const Ref<::String>& string, const Characters& model, const char* promise)
{
    require(string && charactersOf(*string) == model && string->equals(model), promise);
}

// The characters of 16-bit units.
Characters joined(const std::u16string& units)
{
    Characters result;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const bool isPair = i + 1 < units.size() && units[i] >> 10 == 0x36 && units[i + 1] >> 10 == 0x37;
        if (isPair)
            result += char32_t(0x10000 + ((units[i] & 0x3FF) << 10) + (units[i + 1] & 0x3FF));
        else
            result += units[i];
        i += isPair;
    }
    return result;
}

// A text of bytes, of 16-bit units, or of code points, among them such as no file has.
Text textFrom(Input& input)
{
    const std::uint8_t form = input.byte() % 3;
    const std::size_t length = input.byte() % 64;
    if (form == 0) {
        const std::string bytes(input.text(length));
        Characters model;
        for (const char c : bytes)
            model += static_cast<unsigned char>(c);
        return {::String::create(bytes.data(), 0, bytes.size()), model};
    }
    if (form == 1) {
        std::u16string units;
        for (std::size_t i = 0; i < length && !input.isAtEnd(); ++i)
            units += static_cast<char16_t>(input.number(2));
        const auto* memory = reinterpret_cast<const unsigned short*>(units.data());
        return {::String::create(memory, 0, units.size()), joined(units)};
    }
    Characters model;
    for (std::size_t i = 0; i < length && !input.isAtEnd(); ++i)
        model += static_cast<char32_t>(input.byte() % 2 ? input.number(4) : input.number(1));
    return {::String::create(model), model};
}

void checkParts(const Text& text, std::uint64_t start, std::uint64_t length)
{
    const std::size_t from = std::min<std::uint64_t>(start, text.model.size());
    requireSame(text.string->substring(start, length), text.model.substr(from, length), "substring cuts the range");
    requireSame(text.string->substring(start), text.model.substr(from), "substring goes to the end");
    const char32_t c = start < text.model.size() ? text.model[start] : 0;
    require(text.string->charAt(start) == c, "charAt gives 0 behind the end");
    unsigned int* elements = text.string->toElements(start);
    const std::size_t restSize = sizeof(unsigned int) * (text.model.size() - from);
    require(Mem::equal(elements, text.model.data() + from, restSize), "toElements copies the rest");
    Heap::free(elements, Heap::Array, nullptr);
    std::vector<unsigned int> copied(text.model.size() + 1);
    const std::size_t count = text.string->copy(start, length, copied.data());
    require(count == std::min<std::uint64_t>(length, text.model.size() - from), "copy tells how many there were");
    require(Mem::equal(copied.data(), text.model.data() + from, 4 * count), "copy gives the characters");
}

void checkPair(const Text& a, const Text& b, std::uint64_t from)
{
    requireSame(a.string->concat(b.string), a.model + b.model, "concat puts the other text behind");
    const char32_t added = from < 128 ? static_cast<char32_t>(from) : U'\x1F600';
    requireSame(a.string->append(static_cast<unsigned>(added)), a.model + added, "append adds one character");
    const std::size_t found = from > a.model.size() ? Characters::npos : a.model.find(b.model, from);
    require(a.string->find(b.string, from) == std::min(found, a.model.size()), "find gives the first place");
    const char32_t c = b.model.empty() ? U' ' : b.model[0];
    const std::size_t place = from > a.model.size() ? Characters::npos : a.model.find(c, from);
    require(a.string->find(static_cast<unsigned>(c), from) == std::min(place, a.model.size()),
        "find gives the first place");
    require(a.string->equals(b.string) == (a.model == b.model), "equals compares all characters");
    require(a.string->greaterOrEqual(b.string) == (a.model >= b.model), "texts are ordered by code point");
    require((a.string->compare(*b.string) < 0) == (a.model < b.model), "texts are ordered by code point");
}

// Characters that Unicode doesn't have make some units or other.
void checkUnits(const Text& text)
{
    std::size_t count = 0;
    unsigned short* memory = text.string->toUtf16(&count);
    const std::u16string units(memory, memory + count);
    Heap::free(memory, Heap::Array, nullptr);
    std::u16string model;
    for (const char32_t c : text.model) {
        if (c >= 0x110000)
            return;
        if (c > 0xFFFF)
            model += static_cast<char16_t>(0xD800 | (c - 0x10000) >> 10);
        model += static_cast<char16_t>(c > 0xFFFF ? 0xDC00 | (c & 0x3FF) : c);
    }
    require(units == model, "a character above 0xFFFF makes a pair of units");
}

__extension__ typedef __int128 Wide; // digits stop growing it before it overflows

// The number that a text makes; none when it is no number.
template <class Number>
std::optional<Number> numberOf(const Characters& text, unsigned base, bool isSigned)
{
    const bool hasSign = isSigned && !text.empty() && (text[0] == '-' || text[0] == '+');
    if (text.empty() && !isSigned)
        return std::nullopt;
    Wide number = 0;
    for (const char32_t c : text.substr(hasSign)) {
        const std::size_t digit = std::u32string_view(U"0123456789ABCDEFabcdef").find(c);
        const std::size_t value = digit < 16 ? digit : digit - 6;
        if (value >= base)
            return std::nullopt;
        number = std::min(number * base + value, Wide(1) << 100);
    }
    if (hasSign && text[0] == '-')
        number = -number;
    if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max())
        return std::nullopt;
    return static_cast<Number>(number);
}

template <class Number>
void checkNumber(const Text& text)
{
    constexpr Number untouched = 77;
    Number number = untouched;
    const auto model = numberOf<Number>(text.model, 10, std::is_signed_v<Number>);
    const bool isNumber = StrConv::num(text.string, &number, Ref<::String>());
    require(isNumber == model.has_value() && number == model.value_or(untouched), "a number is one wholly");
    require(StrConv::num(text.model, &number) == isNumber && number == model.value_or(untouched),
        "both forms of a text make the same number");
}

void checkNumberInBase(const Text& text, unsigned base)
{
    unsigned number = 77;
    const auto model = numberOf<unsigned>(text.model, base, false);
    const bool isNumber = StrConv::num(text.string, &number, base, Ref<::String>());
    require(isNumber == model.has_value() && number == model.value_or(77), "a number is one wholly");
}

template <class Number>
void checkPrinting(Number number)
{
    const std::string model = std::to_string(number);
    require(StrConv::str(number)->equals(model.c_str()), "a number prints in decimal");
    Number back = 0;
    require(StrConv::num(StrConv::str(number), &back, Ref<::String>()) && back == number, "a printed number reads");
}

void checkNumbers(const Text& text, Input& input)
{
    checkNumber<unsigned int>(text);
    checkNumber<unsigned long long>(text);
    checkNumber<long long>(text);
    for (const unsigned base : {2u, 8u, 16u})
        checkNumberInBase(text, base);
    const std::uint64_t number = input.anyNumber();
    checkPrinting(static_cast<unsigned int>(number));
    checkPrinting(static_cast<unsigned long long>(number));
    checkPrinting(static_cast<long long>(number));
    char digits[80];
    const std::size_t width = input.byte() % 30;
    for (const int base : {2, 8, 10, 16}) {
        const std::string plain(digits, std::to_chars(digits, digits + sizeof(digits), number, base).ptr);
        const std::string padded = std::string(width > plain.size() ? width - plain.size() : 0, '0') + plain;
        const Ref<::String> printed
            = StrConv::str(static_cast<unsigned long long>(number), static_cast<std::size_t>(base), width);
        require(printed->length() == padded.size(), "a number is padded to the width");
        for (std::size_t i = 0; i < padded.size(); ++i)
            require((printed->charAt(i) | 0x20) == unsigned(padded[i] | 0x20), "a number prints in its base");
    }
    const int byte = static_cast<std::int8_t>(number);
    std::snprintf(digits, sizeof(digits), "%03o", static_cast<unsigned>(byte & 0xFF));
    require(StrConv::str(byte, 8, 3)->equals(digits), "a negative byte prints as the byte");
}

void checkSplitting(const Text& text, Input& input)
{
    const char32_t separator = input.byte() % 2 ? U' ' : U'.';
    const std::size_t limit = input.byte() % 4;
    std::vector<Characters> model;
    for (std::size_t start = 0; start < text.model.size();) {
        const bool isLast = limit != 0 && model.size() + 1 == limit;
        const std::size_t found = isLast ? Characters::npos : text.model.find(separator, start);
        const std::size_t end = std::min(found, text.model.size());
        if (end > start)
            model.push_back(text.model.substr(start, end - start));
        start = end + 1;
    }
    const auto pieces = StringUtil::split(text.string, separator, limit);
    require(pieces->size() == model.size(), "a text is split at each separator");
    for (std::size_t i = 0; i < model.size(); ++i)
        requireSame(pieces->get(i), model[i], "the pieces are what stands between separators");
    std::u32string_view views[3];
    const std::size_t count = StringUtil::split(text.model, separator, views);
    require(limit != 0 || count == model.size(), "both forms of a text have the same pieces");
    for (std::size_t i = 0; limit == 0 && i < std::min(count, std::size(views)); ++i)
        require(views[i] == model[i], "both forms of a text have the same pieces");
    const auto isBlank = [](char32_t c) { return c <= U' '; };
    Characters trimmed = text.model;
    trimmed.erase(trimmed.begin(), std::find_if_not(trimmed.begin(), trimmed.end(), isBlank));
    while (!trimmed.empty() && isBlank(trimmed.back()))
        trimmed.pop_back();
    requireSame(StringUtil::trim(text.string), trimmed, "trim takes white space off both ends");
}

// The next line of the rest of a file; the rest is then what stands behind its end.
Characters takeLine(Characters& rest)
{
    const std::size_t end = std::min(rest.find_first_of(U"\r\n"), rest.size());
    const bool isPair = rest.substr(end, 2) == U"\r\n";
    const Characters line = rest.substr(0, end);
    rest.erase(0, end + (isPair ? 2 : 1));
    return line;
}

void checkLines(Input& input)
{
    const std::string bytes(input.text(input.byte()));
    const Ref<Tests::TestStripe> stripe = make<Tests::TestStripe>(bytes);
    Characters rest(stripe->elements.begin(), stripe->elements.end());
    const Ref<CharReader> lines = CharReader::create(stripe, 0);
    while (!rest.empty()) {
        requireSame(lines->readLine(), takeLine(rest), "a line ends at CR, LF, or both");
        require(stripe->tell() == stripe->size() - rest.size(), "the stripe stands behind the line");
    }
    require(!lines->readLine(), "there is no line behind the last");
}

} // namespace

} // namespace Fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace Fuzz;
    Input input(bytes, size);
    while (!input.isAtEnd()) {
        const Text text = textFrom(input);
        requireSame(text.string, text.model, "a text holds what it was made of");
        const std::uint8_t operation = input.byte() % 6;
        const std::uint64_t first = operation < 2 ? input.anyNumber() : 0;
        switch (operation) {
        case 0: checkParts(text, first, input.anyNumber()); break;
        case 1: checkPair(text, textFrom(input), first); break;
        case 2: checkUnits(text); break;
        case 3: checkNumbers(text, input); break;
        case 4: checkSplitting(text, input); break;
        default: checkLines(input);
        }
    }
    return 0;
}
