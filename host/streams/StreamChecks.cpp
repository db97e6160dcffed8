#include <host/streams/StreamChecks.h>

#include <document/Inspection.h>
#include <values/Dictionary.h>
#include <values/ObjectRef.h>

namespace Host {

using namespace Libraries::Files::PDF;

Ref<Value> entryOf(const Stream& stream, const char* key) noexcept
{
    const Ref<Dictionary> dictionary = stream.dict();
    return dictionary ? dictionary->find(::String::create(key)) : nullptr;
}

bool hasDecodeParameters(const Stream& stream) noexcept
{
    for (const char* key : {"DecodeParms", "DP"})
        if (const Ref<Value> value = entryOf(stream, key); value && value->type() != Value::Type::Null)
            return true;
    return false;
}

std::optional<std::pair<std::uint32_t, std::uint32_t>> lengthReferenceOf(const Stream& stream) noexcept
{
    const Ref<ObjectRef> reference = valueAs<ObjectRef>(entryOf(stream, "Length"));
    if (!reference)
        return {};
    return std::pair<std::uint32_t, std::uint32_t>(reference->id(), reference->generation());
}

Ref<PDF::Object> sharerOfLength(const Ref<Document>& document, const Ref<Stream>& stream) noexcept
{
    const auto length = stream ? lengthReferenceOf(*stream) : std::nullopt;
    if (!length)
        return nullptr;
    for (const auto& object : objectsOf(document)) {
        const Ref<Stream> other = valueAs<Stream>(object->value());
        if (other && other != stream && lengthReferenceOf(*other) == length)
            return object;
    }
    return nullptr;
}

} // namespace Host
