#include <document/PageComposition.h>

#include <document/Report.h>
#include <document/StreamCopy.h>
#include <stripes/ElementSizeStripe.h>
#include <values/KindCast.h>
#include <values/NumberText.h>

#include <utility>

// Copying values of another document. A value with parts is a step on a list, not a call: references
// make chains as long as a document has objects, and no stack would hold them. Each turn clones one part, or
// opens the step of one that has parts itself, and hands what is complete on to the step around it.

namespace Libraries::Files::PDF {

namespace {

constexpr CopyWording cloneWording{
    .noStart = "Failed to navigate in to be cloned stream's data",
    .noData = "Failed to read from to be cloned stream's data",
    .noCopy = "Failed to create copied stream",
};

template <class Kind>
Ref<Kind> castToClone(const Ref<Value>& value, const char* word)
{
    Ref<Kind> result = value.cast<Kind>();
    if (!result)
        return report.fail(
            ErrInvalidArgument, "Failed to convert to be cloned ", word, " to ", Kind::kindName);
    return result;
}

Ref<Value> cloneOf(const Name& name)
{
    return make<NameObj>(name.value());
}

Ref<Value> cloneOf(const Boolean& boolean)
{
    return make<BooleanObj>(boolean.value());
}

Ref<Value> cloneOf(const Number& number)
{
    return copyExactly(number);
}

Ref<Value> cloneOf(const String& string)
{
    Ref<::String> text = string.value();
    Ref<TConstArray<std::uint8_t>> bytes = string.data();
    if (!text && !bytes)
        return report.fail(ErrInvalidArgument, "Invalid String value to be cloned");
    if (const StringObj* own = exactly<StringObj>(string))
        return own->copy();
    return text ? make<StringObj>(std::move(text)) : make<StringObj>(std::move(bytes));
}

Ref<Value> cloneOf(const Null&)
{
    return make<NullObj>();
}

template <class Kind>
bool cloneScalar(const Ref<Value>& value, const char* word, Ref<Value>& clone)
{
    const Ref<Kind> scalar = castToClone<Kind>(value, word);
    clone = scalar ? cloneOf(*scalar) : nullptr;
    return bool(clone);
}

} // namespace

// A value that is being cloned part by part.
class CloningStep {
public:
    virtual ~CloningStep() = default;

    // The next part to clone, null when there is no further one. False with line and code when it can't
    // be had.
    virtual bool next(Ref<Value>& part) noexcept = 0;
    // Takes the clone of that part; false with line and code.
    virtual bool take(Ref<Value> clone) noexcept = 0;
    // The clone of the value, once it has the clones of all parts.
    virtual Ref<Value> finish() noexcept = 0;
    // Writes the line and sets the code for a part that could not be cloned.
    virtual void fail() noexcept = 0;
};

namespace {

class ArrayStep final : public CloningStep {
public:
    explicit ArrayStep(Ref<Array> array) noexcept : _array(std::move(array)) {}

    bool next(Ref<Value>& part) noexcept override
    {
        if (_clones.size() >= _array->size())
            return true;
        part = _array->get(_clones.size());
        return part || report.fail(ErrInvalidArgument, "Element of to be cloned array is NULL: ", _clones.size());
    }
    bool take(Ref<Value> clone) noexcept override
    {
        _clones.push_back(std::move(clone));
        return true;
    }
    Ref<Value> finish() noexcept override { return make<ArrayObj>(std::move(_clones)); }
    void fail() noexcept override
    {
        report.fail(ErrNoResource, "Failed to clone array element of to be cloned array: ", _clones.size());
    }

private:
    const Ref<Array> _array;
    ArrayObj::Elements _clones;
};

class DictionaryStep final : public CloningStep {
public:
    DictionaryStep(Ref<Dictionary> dictionary, Ref<TVector<Ref<::String>>> keys) noexcept
        : _dictionary(std::move(dictionary)), _keys(std::move(keys))
    {
    }

    bool next(Ref<Value>& part) noexcept override
    {
        if (_index == _keys->size())
            return true;
        const Ref<::String> key = _keys->get(_index);
        if (!key)
            return report.fail(ErrInvalidArgument, "Key in to be cloned dictionary is NULL: ", _index);
        part = _dictionary->find(key);
        if (!part)
            return report.fail(
                ErrInvalidArgument, "Failed to retrieve value of key in to be cloned dictionary: ", key);
        return true;
    }
    bool take(Ref<Value> clone) noexcept override
    {
        const Ref<::String> key = _keys->get(_index++);
        return _clone->set(key, std::move(clone))
            || report.fail(ErrNoResource, "Failed to set key to value in new dictionary: ", key);
    }
    Ref<Value> finish() noexcept override { return _clone; }
    void fail() noexcept override
    {
        report.fail(
            ErrInvalidArgument, "Failed to clone value of key in to be cloned dictionary: ", _keys->get(_index));
    }

private:
    const Ref<Dictionary> _dictionary;
    const Ref<TVector<Ref<::String>>> _keys;
    std::size_t _index = 0;
    const Ref<DictionaryObj> _clone = make<DictionaryObj>();
};

class StreamStep final : public CloningStep {
public:
    StreamStep(Ref<Dictionary> dictionary, Ref<Interfaces::Stripe> data) noexcept
        : _dictionary(std::move(dictionary)), _data(std::move(data))
    {
    }

    bool next(Ref<Value>& part) noexcept override
    {
        part = std::move(_dictionary);
        return true;
    }
    bool take(Ref<Value> clone) noexcept override
    {
        _clone = clone.cast<Dictionary>();
        if (!_clone)
            fail();
        return bool(_clone);
    }
    Ref<Value> finish() noexcept override { return make<StreamObj>(std::move(_clone), std::move(_data)); }
    void fail() noexcept override
    {
        report.fail(ErrNoResource, "Failed to clone dictionary of to be cloned stream");
    }

private:
    Ref<Dictionary> _dictionary; // null once it was given out
    Ref<Interfaces::Stripe> _data;
    Ref<Dictionary> _clone;
};

} // namespace

// An object that a reference leads to. Its clone becomes an object of the target, and is all or nothing there:
// only appending happens while it is made, so its length is enough to bring the table back.
class DocumentObj::Cloning::ReferenceStep final : public CloningStep {
public:
    ReferenceStep(Cloning& cloning, Ref<PDF::Object> object, Ref<Value> value) noexcept
        : _cloning(cloning), _object(std::move(object)), _value(std::move(value)),
          _objectsBefore(cloning._target._objects.size())
    {
    }
    ~ReferenceStep() override { _cloning._inProgress.erase(_object.get()); }

    bool next(Ref<Value>& part) noexcept override
    {
        part = std::move(_value);
        return true;
    }
    bool take(Ref<Value> clone) noexcept override
    {
        _reference = _cloning._target.addObject(std::move(clone));
        return bool(_reference);
    }
    Ref<Value> finish() noexcept override { return std::move(_reference); }
    void fail() noexcept override
    {
        _cloning._target._objects.resize(_objectsBefore);
        report.fail(ErrInvalidArgument, "Failed to clone object: ", _object->asText());
    }

private:
    Cloning& _cloning;
    const Ref<PDF::Object> _object;
    Ref<Value> _value; // null once it was given out
    const std::size_t _objectsBefore;
    Ref<ObjectRef> _reference;
};

DocumentObj::Cloning::Cloning(DocumentObj& target, Ref<Document> source) noexcept
    : _target(target), _source(std::move(source))
{
}

DocumentObj::Cloning::~Cloning() noexcept = default;

Ref<Value> DocumentObj::Cloning::cloneValue(Ref<Value> value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    Ref<Value> part = std::move(value); // the next to clone; null once there is none
    Ref<Value> clone;                   // the last one made, until it is handed on; in the end the whole
    while (part)
        if (!begin(part, clone) || !handOn(clone, part))
            return abandon();
    return clone;
}

Ref<ObjectRef> DocumentObj::Cloning::cloneObject(Ref<Value> value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    const std::size_t objectsBefore = _target._objects.size();
    Ref<Value> clone = cloneValue(std::move(value));
    if (!clone) {
        _target._objects.resize(objectsBefore);
        return refuse(ErrNoResource);
    }
    return _target.addObject(std::move(clone));
}

// Makes the clone of a part, or opens the step that will make it: then `clone` is left null.
bool DocumentObj::Cloning::begin(const Ref<Value>& part, Ref<Value>& clone) noexcept
{
    switch (part->type()) {
    case Value::Type::Name: return cloneScalar<Name>(part, "name", clone);
    case Value::Type::Boolean: return cloneScalar<Boolean>(part, "boolean", clone);
    case Value::Type::Number: return cloneScalar<Number>(part, "number", clone);
    case Value::Type::String: return cloneScalar<String>(part, "string", clone);
    case Value::Type::ObjectRef: return beginReference(castToClone<ObjectRef>(part, "object reference"), clone);
    case Value::Type::Dictionary: return open(castToClone<Dictionary>(part, "dictionary"));
    case Value::Type::Stream: return open(castToClone<Stream>(part, "stream"));
    case Value::Type::Array: return open(castToClone<Array>(part, "array"));
    case Value::Type::Null: return cloneScalar<Null>(part, "value", clone);
    case Value::Type::Invalid: break;
    }
    return report.fail(ErrNotSupported, "Value type not supported for cloning: ", part->type());
}

bool DocumentObj::Cloning::beginReference(const Ref<ObjectRef>& reference, Ref<Value>& clone) noexcept
{
    if (!reference)
        return false;
    Ref<PDF::Object> object = _source->object(reference);
    if (!object)
        return report.fail(
            ErrInvalidArgument, "Failed to resolve to be cloned object reference: ", reference->asText());
    Ref<Value> held = object->value();
    if (!held)
        return report.fail(ErrInvalidArgument, "To be cloned object has no value: ", object->asText());
    // A reference of the target itself stays the very value that it is.
    if (_source.get() == &_target) {
        clone = reference;
        return true;
    }
    // An object that is being cloned already closes a cycle.
    if (!_inProgress.insert(object.get()).second)
        return report.fail(ErrInvalidArgument, "Failed to clone object: ", object->asText());
    _open.push_back(std::make_unique<ReferenceStep>(*this, std::move(object), std::move(held)));
    return true;
}

bool DocumentObj::Cloning::open(const Ref<Dictionary>& dictionary) noexcept
{
    if (!dictionary)
        return false;
    Ref<TVector<Ref<::String>>> keys = dictionary->keys();
    if (!keys)
        return report.fail(ErrInvalidArgument, "Failed to retrieve keys of the be cloned dictionary");
    _open.push_back(std::make_unique<DictionaryStep>(dictionary, std::move(keys)));
    return true;
}

bool DocumentObj::Cloning::open(const Ref<Stream>& stream) noexcept
{
    if (!stream)
        return false;
    Ref<Dictionary> dictionary = stream->dict();
    if (!dictionary)
        return report.fail(ErrInvalidArgument, "Failed to retrieve to be cloned stream's dictionary");
    Ref<Interfaces::Stripe> data = copyData(stream);
    if (!data)
        return false;
    _open.push_back(std::make_unique<StreamStep>(std::move(dictionary), std::move(data)));
    return true;
}

bool DocumentObj::Cloning::open(const Ref<Array>& array) noexcept
{
    if (!array)
        return false;
    _open.push_back(std::make_unique<ArrayStep>(array));
    return true;
}

// Hands a clone to the value that it is a part of, and so on outwards as long as that completes the next one; a
// value that was just opened waits for its first part, and is handed none. Afterwards `part` is the one to clone
// next. It is null with nothing open any more, and `clone` is the whole.
bool DocumentObj::Cloning::handOn(Ref<Value>& clone, Ref<Value>& part) noexcept
{
    part = nullptr;
    while (!_open.empty()) {
        CloningStep& innermost = *_open.back();
        const bool isTaken = !clone || innermost.take(std::exchange(clone, nullptr));
        if (!isTaken || !innermost.next(part)) {
            _open.pop_back();
            return false;
        }
        if (part)
            return true;
        clone = innermost.finish();
        _open.pop_back();
    }
    return true;
}

// Fails every value that waits for the one that failed, from the inside out.
Failure DocumentObj::Cloning::abandon() noexcept
{
    for (; !_open.empty(); _open.pop_back())
        _open.back()->fail();
    return {};
}

// The stored data of a stream, in memory, as a stripe for one clone. All clones share the bytes.
Ref<Interfaces::Stripe> DocumentObj::Cloning::copyData(const Ref<Stream>& stream) noexcept
{
    CopiedStream& copied = _copies[stream.get()];
    if (!copied.copy.block)
        copied = {stream, readData(stream)};
    if (!copied.copy.block)
        return nullptr;
    Ref<Interfaces::Stripe> data = copied.copy.elements();
    if (!data)
        return report.fail(ErrNoResource, "Failed to create adapter stream");
    return data;
}

StreamCopy DocumentObj::Cloning::readData(const Ref<Stream>& stream) noexcept
{
    const Ref<Interfaces::Stripe> data = _source->streamData(stream, false);
    if (!data) {
        report.fail(ErrInvalidArgument, "Failed to retrieve to be cloned stream's data");
        return {};
    }
    const std::uint64_t width = _target._stripe->elementSize();
    if (data->elementSize() != width) {
        report.fail(ErrInvalidArgument, "To be cloned raw stream as a different element size (",
            data->elementSize(), ") than the current stream (", width, ")");
        return {};
    }
    return copyToMemory(*data, cloneWording);
}

} // namespace Libraries::Files::PDF
