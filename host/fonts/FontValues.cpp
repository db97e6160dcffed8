#include <host/fonts/FontValues.h>

#include <host/base/Characters.h>
#include <host/streams/StreamBytes.h>
#include <values/Exact.h>
#include <values/Name.h>
#include <values/Number.h>
#include <values/String.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Host {

namespace {

constexpr std::size_t tagLength = 6;

std::string bytesOf(const ::String& written)
{
    std::string bytes;
    written.forEach([&bytes](char32_t c) { bytes += static_cast<char>(byteOfElement(c)); });
    return bytes;
}

} // namespace

std::optional<double> numberOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept
{
    const Ref<PDF::Number> number = PDF::resolveAs<PDF::Number>(document, value);
    if (!number)
        return {};
    const double exact = PDF::exactDouble(*number);
    return std::isfinite(exact) ? std::optional(exact) : std::nullopt;
}

std::optional<double> numberAt(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept
{
    return numberOf(document, dictionary.find(::String::create(key)));
}

std::optional<std::int32_t> countOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept
{
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    const std::optional<double> number = numberOf(document, value);
    return number && *number >= -most && *number <= most ? std::optional(static_cast<std::int32_t>(*number))
                                                         : std::nullopt;
}

std::vector<double> numbersOf(const PDF::Document& document, const PDF::Array& array) noexcept
{
    std::vector<double> numbers;
    for (std::uint64_t i = 0; i < array.size(); ++i) {
        const std::optional<double> number = numberOf(document, array.get(i));
        if (!number)
            return {};
        numbers.push_back(*number);
    }
    return numbers;
}

std::vector<double> numbersAt(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key, std::size_t count) noexcept
{
    const Ref<PDF::Array> array = valueAt<PDF::Array>(document, dictionary, key);
    return array && array->size() == count ? numbersOf(document, *array) : std::vector<double>();
}

std::string nameOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept
{
    const Ref<PDF::Name> name = PDF::resolveAs<PDF::Name>(document, value);
    return name && name->value() ? decodedName(bytesOf(*name->value())) : std::string();
}

std::string nameAt(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept
{
    return nameOf(document, dictionary.find(::String::create(key)));
}

std::string textAt(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept
{
    std::string text;
    const Ref<PDF::String> string = valueAt<PDF::String>(document, dictionary, key);
    if (const auto bytes = string ? PDF::exactBytes(*string) : std::nullopt)
        text.assign(bytes->begin(), bytes->end());
    return text;
}

std::optional<std::string> dataOf(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream,
    std::size_t limit, Budget& budget) noexcept
{
    std::string data;
    const Result<std::uint64_t> copied = copyStream(
        document, stream, StreamForm::Decoded, budget, [&data, limit](const std::uint8_t* bytes, std::size_t count) {
            if (count > limit - data.size())
                return false;
            data.append(reinterpret_cast<const char*>(bytes), count);
            return true;
        });
    return copied ? std::optional(std::move(data)) : std::nullopt;
}

bool hasTag(std::string_view fontName) noexcept
{
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    return fontName.size() > tagLength && fontName[tagLength] == '+'
        && std::all_of(fontName.begin(), fontName.begin() + tagLength, isCapital);
}

std::string_view withoutTag(std::string_view fontName) noexcept
{
    return hasTag(fontName) ? fontName.substr(tagLength + 1) : fontName;
}

} // namespace Host
