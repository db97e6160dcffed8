#include <host/pages/Edit.h>

#include <host/pages/Geometry.h>
#include <host/streams/StoredBytes.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/NumberObj.h>
#include <values/ObjectRefObj.h>
#include <values/Stream.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

Ref<Value> nameValue(const char* name) noexcept
{
    return Name::create(::String::create(name));
}

Ref<Value> numberValue(double number) noexcept
{
    const std::string text = decimalText(number);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string fraction = point < text.size() ? text.substr(point + 1) : "0";
    const std::int64_t whole = std::stoll(text.substr(0, point));
    NumberObj::Spelling spelling;
    if (whole == 0 && text.starts_with('-'))
        spelling.flags = NumberObj::Spelling::Minus;
    if (point < text.size())
        spelling.fractionZeros = std::uint8_t(fraction.find_first_not_of('0'));
    return make<NumberObj>(whole, std::uint64_t(std::stoull(fraction)), spelling);
}

Ref<Value> arrayOf(const std::vector<double>& numbers) noexcept
{
    std::vector<Ref<Value>> values;
    for (const double number : numbers)
        values.push_back(numberValue(number));
    return Array::create(values);
}

Ref<ObjectRef> referenceTo(const PDF::Object& object) noexcept
{
    return make<ObjectRefObj>(object.id(), object.generation());
}

Ref<Stream> withEntry(const Ref<Document>& document, const Ref<Stream>& stream, const Ref<::String>& key,
    const Ref<Value>& value) noexcept
{
    const auto stored = storedBytes(document, stream);
    const Ref<Dictionary> dictionary = stream->dict();
    if (!stored || !dictionary)
        return nullptr;
    const Ref<Dictionary> entries = Dictionary::create();
    const auto keys = dictionary->keys();
    for (const Ref<::String>& each : *keys)
        entries->set(each, dictionary->find(each));
    entries->set(key, value);
    return createStream(entries, *stored);
}

Ref<Value> contentStream(std::string_view text) noexcept
{
    return createStream(Dictionary::create(), std::vector<std::uint8_t>(text.begin(), text.end()));
}

} // namespace Host
