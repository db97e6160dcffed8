#include <values/StringObj.h>

#include <platform/Reporter.h>
#include <platform/StringPrinter.h>

#include <vector>

namespace Libraries::Files::PDF {

namespace {

constexpr unsigned int maxAscii = 127;
constexpr unsigned short byteOrderMark = 0xFEFF;

bool isAscii(const ::String& text)
{
    bool result = true;
    text.forEach([&result](unsigned int c) { result = result && c <= maxAscii; });
    return result;
}

Ref<TConstArray<std::uint8_t>> toBigEndianUtf16(const ::String& text)
{
    std::size_t length = 0;
    unsigned short* units = text.toUtf16(&length);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(2 * (length + 1));
    const auto add = [&bytes](unsigned short unit) {
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
        bytes.push_back(static_cast<std::uint8_t>(unit));
    };
    add(byteOrderMark);
    for (std::size_t i = 0; i < length; ++i)
        add(units[i]);
    Heap::free(units, Heap::Array, __builtin_return_address(0));
    return TConstArray<std::uint8_t>::create(bytes.data(), bytes.size());
}

// Whether these are 16-bit units after this mark.
bool beginsWith(const TConstArray<std::uint8_t>& bytes, std::uint8_t first, std::uint8_t second)
{
    return bytes.size() >= 2 && bytes.size() % 2 == 0 && bytes.data()[0] == first && bytes.data()[1] == second;
}

// The 16-bit units after the byte order mark.
Ref<::String> fromUtf16(const TConstArray<std::uint8_t>& bytes, bool isBigEndian)
{
    std::vector<unsigned short> units;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const unsigned first = bytes.data()[i];
        const unsigned second = bytes.data()[i + 1];
        units.push_back(static_cast<unsigned short>(isBigEndian ? first << 8 | second : second << 8 | first));
    }
    return ::String::create(units.data(), 0, units.size());
}

} // namespace

Ref<String> String::create(Ref<::String> text) noexcept
{
    if (!text)
        return refuse(ErrNullArgument);
    if (isAscii(*text))
        return make<StringObj>(std::move(text));
    return make<StringObj>(toBigEndianUtf16(*text));
}

Ref<String> String::create(Ref<TConstArray<std::uint8_t>> bytes) noexcept
{
    if (!bytes)
        return refuse(ErrNullArgument);
    return make<StringObj>(std::move(bytes));
}

// Where a call by the qualified name ends; from here it goes to the override. Without the reference it would
// do the same, but look to compilers like an endless recursion.
Ref<::String> String::value() const noexcept
{
    const String& string = *this;
    return string.value();
}

Ref<::String> String::asText() const noexcept
{
    if (Ref<::String> text = value())
        return text;
    const Ref<TConstArray<std::uint8_t>> bytes = data();
    if (!bytes)
        return refuse(ErrNoResource);
    if (beginsWith(*bytes, 0xFF, 0xFE))
        return fromUtf16(*bytes, false);
    if (beginsWith(*bytes, 0xFE, 0xFF))
        return fromUtf16(*bytes, true);
    const Ref<StringPrinter> printer = StringPrinter::create();
    for (std::size_t i = 0; i < bytes->size(); ++i)
        printer->hex().width(2).print(bytes->data()[i]);
    return printer->take();
}

bool String::equal(Ref<Value> other) const noexcept
{
    const Ref<String> string = valueAs<String>(other);
    if (!string)
        return false;
    if (const Ref<::String> text = value(), otherText = string->value(); text && otherText)
        return text->equals(otherText);
    const Ref<TConstArray<std::uint8_t>> bytes = data();
    const Ref<TConstArray<std::uint8_t>> otherBytes = string->data();
    return bytes && otherBytes && bytes->size() == otherBytes->size()
        && Mem::equal(bytes->data(), otherBytes->data(), bytes->size());
}

Ref<StringObj> StringObj::copy() const noexcept
{
    switch (_memory) {
    case Memory::Source:
        return make<StringObj>(_text, _bytes);
    case Memory::OddDigit:
        return make<StringObj>(_bytes, OddDigit());
    case Memory::None:
        break;
    }
    return _text ? make<StringObj>(_text) : make<StringObj>(_bytes);
}

} // namespace Libraries::Files::PDF
