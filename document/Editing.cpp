#include <document/Editing.h>

#include <document/DocumentObj.h>
#include <document/Inspection.h>
#include <document/Keys.h>
#include <document/Resolve.h>
#include <document/StreamCopy.h>
#include <platform/Limits.h>
#include <platform/MemoryStream.h>
#include <stripes/ByteElements.h>
#include <values/ArrayObj.h>
#include <values/DictionaryObj.h>
#include <values/Name.h>
#include <values/NullObj.h>
#include <values/NumberObj.h>
#include <values/ObjectRefObj.h>
#include <values/StreamObj.h>

namespace Libraries::Files::PDF {

namespace {

Ref<DocumentObj> implementation(const Ref<Document>& document)
{
    Ref<DocumentObj> held = document.cast<DocumentObj>();
    if (!held)
        return refuse(document ? ErrInvalidArgument : ErrNullArgument);
    return held;
}

// What would bring a whole document along.
bool isStructure(const Ref<Value>& value)
{
    const Ref<Dictionary> dictionary = valueAs<Dictionary>(value);
    const Ref<Name> type = dictionary ? valueAs<Name>(dictionary->find(Keys::type)) : nullptr;
    const Ref<::String> text = type ? type->value() : nullptr;
    return text && (text->equals("Page") || text->equals("Pages") || text->equals("Catalog"));
}

constexpr CopyWording copyWording{
    .noStart = "Failed to navigate in data of stream to be copied",
    .noData = "Failed to read data of stream to be copied",
    .noCopy = "Failed to create copy of stream data",
};

} // namespace

Ref<ObjectRef> addObject(const Ref<Document>& document, Ref<Value> value) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    return held ? held->addObject(std::move(value)) : nullptr;
}

bool raiseVersion(const Ref<Document>& document, std::uint32_t version) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    if (held)
        held->raiseVersion(version);
    return bool(held);
}

Ref<Stream> createStream(Ref<Dictionary> dictionary, const std::vector<std::uint8_t>& stored) noexcept
{
    if (!dictionary)
        return refuse(ErrNullArgument);
    const Ref<MemoryStream> bytes = MemoryStream::create(0, 1);
    bytes->append(stored.data(), stored.size());
    bytes->fit();
    bytes->seek(0);
    dictionary->set(Keys::length, make<NumberObj>(std::int64_t(stored.size()), 0u));
    return make<StreamObj>(std::move(dictionary), make<ByteElements>(bytes));
}

NewObjects::NewObjects(Ref<Document> document) noexcept : _document(std::move(document)), _firstId(0)
{
    if (const Ref<DocumentObj> held = _document.cast<DocumentObj>())
        _firstId = held->nextObjectId();
}

NewObjects::~NewObjects() noexcept = default;

Ref<ObjectRef> NewObjects::reserve() noexcept
{
    return add(nullptr);
}

void NewObjects::set(const Ref<ObjectRef>& reference, Ref<Value> value) noexcept
{
    if (reference && isOwn(*reference))
        _values[reference->id() - _firstId] = std::move(value);
}

Ref<ObjectRef> NewObjects::add(Ref<Value> value) noexcept
{
    _values.push_back(std::move(value));
    return make<ObjectRefObj>(std::uint32_t(_firstId + _values.size() - 1), std::uint16_t(0));
}

Ref<Value> NewObjects::resolve(const Ref<Value>& value) const noexcept
{
    const Ref<ObjectRef> reference = valueAs<ObjectRef>(value);
    if (reference && isOwn(*reference))
        return _values[reference->id() - _firstId];
    return PDF::resolve(*_document, value);
}

bool NewObjects::isOwn(const ObjectRef& reference) const noexcept
{
    return reference.id() - _firstId < _values.size() && reference.generation() == 0;
}

bool NewObjects::commit() noexcept
{
    const Ref<DocumentObj> held = _document.cast<DocumentObj>();
    if (!held || held->nextObjectId() != _firstId)
        return refuse(ErrInvalidArgument);
    for (Ref<Value>& value : _values)
        held->addObject(value ? std::move(value) : make<NullObj>());
    _values.clear();
    _firstId = held->nextObjectId();
    return true;
}

ValueCopying::ValueCopying(NewObjects& target, Ref<Document> source) noexcept
    : _target(target), _source(std::move(source))
{
}

ValueCopying::~ValueCopying() noexcept = default;

void ValueCopying::replace(const Ref<Object>& object, Ref<Value> by) noexcept
{
    _places[object.get()] = std::move(by);
}

Ref<Value> ValueCopying::copy(const Ref<Value>& value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    Ref<Value> result = copyParts(value);
    // What was referred to, and what that refers to: the list grows meanwhile.
    for (; result && _next < _copied.size(); ++_next) {
        const auto [object, reference] = _copied[_next];
        Ref<Value> held = object->value();
        Ref<Value> copied = held ? copyParts(held) : Ref<Value>(make<NullObj>());
        if (!copied)
            return nullptr;
        _target.set(reference, std::move(copied));
    }
    return result;
}

// The copy of a value without what it refers to, which is noted. Null with the code of stream data.
Ref<Value> ValueCopying::copyParts(const Ref<Value>& value) noexcept
{
    switch (value->type()) {
    case Value::Type::ObjectRef:
        return copyReference(valueAs<ObjectRef>(value));
    case Value::Type::Array:
        return copyArray(value);
    case Value::Type::Dictionary:
        if (const Ref<Dictionary> dictionary = valueAs<Dictionary>(value))
            return copyDictionary(*dictionary, false);
        return make<NullObj>();
    case Value::Type::Stream:
        return copyStream(valueAs<Stream>(value));
    default:
        return value; // nothing changes it but a `Length`, which streams get anew
    }
}

Ref<Value> ValueCopying::copyReference(const Ref<ObjectRef>& reference) noexcept
{
    const std::uint32_t codeBefore = Error::get();
    const Ref<Object> object = reference ? _source->object(reference) : nullptr;
    Error::set(codeBefore);
    if (const auto found = _places.find(object.get()); found != _places.end())
        return found->second;
    if (_source == _target.document())
        return reference;
    if (!object)
        return make<NullObj>();
    if (isStructure(object->value()))
        return make<NullObj>();
    const Ref<ObjectRef> place = _target.reserve();
    _places.emplace(object.get(), place);
    _copied.emplace_back(object, place);
    return place;
}

Ref<Value> ValueCopying::copyArray(const Ref<Value>& value) noexcept
{
    const Ref<Array> array = valueAs<Array>(value);
    ArrayObj::Elements elements;
    for (std::uint64_t i = 0; array && i < array->size(); ++i) {
        const Ref<Value> element = array->get(i);
        elements.push_back(element ? copyParts(element) : Ref<Value>(make<NullObj>()));
        if (!elements.back())
            return nullptr;
    }
    return make<ArrayObj>(std::move(elements));
}

// All entries but `Length`, where streams are copied.
Ref<Dictionary> ValueCopying::copyDictionary(const Dictionary& dictionary, bool isOfStream) noexcept
{
    DictionaryObj::Entries entries;
    const auto keys = dictionary.keys();
    for (const Ref<::String>& key : *keys) {
        const Ref<Value> value = isOfStream && key->equals(Keys::length) ? nullptr : dictionary.find(key);
        Ref<Value> copied = value ? copyParts(value) : nullptr;
        if (value && !copied)
            return nullptr;
        if (copied)
            entries.push_back({key, std::move(copied)});
    }
    return make<DictionaryObj>(std::move(entries));
}

Ref<Value> ValueCopying::copyStream(const Ref<Stream>& stream) noexcept
{
    const Ref<Dictionary> dictionary = stream ? stream->dict() : nullptr;
    const Ref<Interfaces::Stripe> data = dictionary ? _source->streamData(stream, false) : nullptr;
    if (!data)
        return nullptr;
    const bool isInFile = stream->strmOfs() < fileSizeOf(_source);
    _taken += isInFile ? data->size() : 0;
    if (Limits::isReadTooOften(_taken, fileSizeOf(_source)))
        return refuse(ErrOutOfRange);
    const std::uint64_t position = data->tell();
    const StreamCopy bytes = copyToMemory(*data, copyWording);
    data->seek(position);
    if (!bytes.block)
        return nullptr;
    const Ref<Dictionary> copied = copyDictionary(*dictionary, true);
    if (!copied)
        return nullptr;
    copied->set(Keys::length, make<NumberObj>(std::int64_t(data->size()), 0u));
    return make<StreamObj>(copied, bytes.elements());
}

} // namespace Libraries::Files::PDF
