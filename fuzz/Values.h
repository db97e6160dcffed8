#pragma once

#include <document/Inspection.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/Number.h>
#include <values/Object.h>
#include <values/ObjectRefObj.h>
#include <values/StreamObj.h>
#include <values/String.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Fuzz {

namespace PDF = Libraries::Files::PDF;

// Calls `visit` with the value and with every value in it, the dictionary of a stream included.
template <class Visitor>
void visitValues(const Ref<PDF::Value>& value, const Visitor& visit) noexcept
{
    visit(value);
    if (const Ref<PDF::Array> array = PDF::valueAs<PDF::Array>(value)) {
        for (std::uint64_t i = 0; i < array->size(); ++i)
            visitValues(array->get(i), visit);
    } else if (const Ref<PDF::Dictionary> dictionary = PDF::valueAs<PDF::Dictionary>(value)) {
        const auto keys = dictionary->keys();
        for (const Ref<::String>& key : *keys)
            visitValues(dictionary->find(key), visit);
    } else if (const Ref<PDF::Stream> stream = PDF::valueAs<PDF::Stream>(value)) {
        visitValues(Ref<PDF::Value>(stream->dict()), visit);
    }
}

// The same for every object of the document.
template <class Visitor>
void visitValues(const Ref<PDF::Document>& document, const Visitor& visit) noexcept
{
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        visitValues(object->value(), visit);
}

// The streams of the document, in the order of its table.
inline std::vector<Ref<PDF::StreamObj>> streamsOf(const Ref<PDF::Document>& document) noexcept
{
    std::vector<Ref<PDF::StreamObj>> streams;
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        if (const Ref<PDF::Stream> stream = PDF::valueAs<PDF::Stream>(object->value()))
            streams.push_back(stream.cast<PDF::StreamObj>());
    return streams;
}

// The number that stands for an entry of a dictionary, directly or behind one reference; null for none.
inline Ref<PDF::Number> numberIn(
    const Ref<PDF::Document>& document, const Ref<PDF::Dictionary>& dictionary, const char* key) noexcept
{
    Ref<PDF::Value> value = dictionary->find(::String::create(key));
    if (const Ref<PDF::ObjectRef> reference = PDF::valueAs<PDF::ObjectRef>(value)) {
        const Ref<PDF::Object> object = document->object(reference);
        value = object ? object->value() : nullptr;
    }
    return PDF::valueAs<PDF::Number>(value);
}

} // namespace Fuzz
