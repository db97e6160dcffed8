#include <host/fields/NewValues.h>

#include <platform/ConstantText.h>
#include <platform/MemoryStream.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/NumberObj.h>

#include <cmath>

namespace Host {

namespace {

constexpr std::int64_t unit = 10000; // of the last decimal
constexpr std::size_t worthCompressing = 512;

constinit const ConstantText filter{"Filter"};

Ref<MemoryStream> bytesOf(std::string_view data)
{
    const Ref<MemoryStream> bytes = MemoryStream::create(0, 1);
    bytes->append(reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
    bytes->fit();
    bytes->seek(0);
    return bytes;
}

} // namespace

Ref<PDF::Value> newNumber(double number) noexcept
{
    const auto scaled = static_cast<std::int64_t>(std::llround(number * unit));
    auto fraction = static_cast<std::uint64_t>(std::abs(scaled) % unit);
    int digits = 4;
    for (; fraction != 0 && fraction % 10 == 0; fraction /= 10)
        --digits;
    PDF::NumberObj::Spelling spelling;
    if (scaled < 0 && scaled / unit == 0)
        spelling.flags |= PDF::NumberObj::Spelling::Minus;
    if (fraction != 0)
        spelling.fractionZeros = static_cast<std::uint8_t>(digits - int(std::to_string(fraction).size()));
    return make<PDF::NumberObj>(scaled / unit, fraction, spelling);
}

Ref<PDF::Value> newNumbers(const std::vector<double>& numbers) noexcept
{
    std::vector<Ref<PDF::Value>> values;
    for (const double number : numbers)
        values.push_back(newNumber(number));
    return PDF::Array::create(values);
}

Ref<PDF::Value> newName(std::string_view name) noexcept
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char byte : name)
        if (std::string_view("#/()<>[]{}%").find(byte) == std::string_view::npos && byte > ' ' && byte < 127)
            text += byte;
        else
            text.append({'#', digits[static_cast<unsigned char>(byte) >> 4], digits[byte & 15]});
    return PDF::Name::create(::String::create(text.c_str()));
}

Ref<PDF::Dictionary> newDictionary(std::initializer_list<std::pair<const char*, Ref<PDF::Value>>> entries) noexcept
{
    Ref<PDF::Dictionary> dictionary = PDF::Dictionary::create();
    for (const auto& [key, value] : entries)
        dictionary->set(::String::create(key), value);
    return dictionary;
}

Ref<PDF::Stream> newStream(
    const Ref<PDF::Document>& document, const Ref<PDF::Dictionary>& dictionary, std::string_view data) noexcept
{
    if (data.size() < worthCompressing)
        return PDF::createStream(dictionary, std::vector<std::uint8_t>(data.begin(), data.end()));
    dictionary->set(filter, newName("FlateDecode"));
    Ref<PDF::Stream> stream = PDF::createStream(dictionary, {});
    return document->setStreamData(stream, bytesOf(data), true) ? stream : nullptr;
}

bool replaceData(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, std::string_view data) noexcept
{
    return document->setStreamData(stream, bytesOf(data), bool(stream->dict()->find(filter)));
}

} // namespace Host
