#include <values/DictionaryObj.h>

#include <platform/StringPrinter.h>
#include <values/TypedAccess.h>

namespace Libraries::Files::PDF {

namespace {

const Reporter report("PDF");

bool isUsableKey(const Ref<::String>& key)
{
    if (!key)
        return refuse(ErrNullArgument);
    if (key->isEmpty())
        return refuse(ErrInvalidArgument);
    return true;
}

} // namespace

Ref<Dictionary> Dictionary::create() noexcept
{
    return make<DictionaryObj>();
}

template <class Kind>
Ref<Kind> Dictionary::findAs(Ref<::String> key, bool optional) const noexcept
{
    if (const Ref<Value> value = find(key))
        return castValue<Kind>(report, value);
    const std::uint32_t code = Error::get();
    if (!optional)
        report.line("Key not found in dictionary: ", key);
    return refuse(code);
}

Ref<ObjectRef> Dictionary::findAsObjectRef(Ref<::String> key, bool optional) const noexcept
{
    return findAs<ObjectRef>(std::move(key), optional);
}

Ref<Array> Dictionary::findAsArray(Ref<::String> key, bool optional) const noexcept
{
    return findAs<Array>(std::move(key), optional);
}

Ref<Dictionary> Dictionary::findAsDictionary(Ref<::String> key, bool optional) const noexcept
{
    return findAs<Dictionary>(std::move(key), optional);
}

Ref<Name> Dictionary::findAsName(Ref<::String> key, bool optional) const noexcept
{
    return findAs<Name>(std::move(key), optional);
}

Ref<Number> Dictionary::findAsNumber(Ref<::String> key, bool optional) const noexcept
{
    return findAs<Number>(std::move(key), optional);
}

Ref<String> Dictionary::findAsString(Ref<::String> key, bool optional) const noexcept
{
    return findAs<String>(std::move(key), optional);
}

Ref<::String> Dictionary::asText() const noexcept
{
    const Ref<StringPrinter> printer = StringPrinter::create();
    printer->print("<<");
    const Ref<TVector<Ref<::String>>> list = keys();
    for (std::size_t i = 0; list && i < list->size(); ++i) {
        const Ref<::String> key = list->get(i);
        const Ref<Value> value = find(key);
        printer->print(" ").print(key).print(" -> ");
        if (value)
            printer->print(value->asText());
        else
            printer->print("null");
    }
    printer->print(" >>");
    return printer->take();
}

bool Dictionary::equal(Ref<Value> other) const noexcept
{
    const Ref<Dictionary> dictionary = valueAs<Dictionary>(other);
    if (!dictionary)
        return false;
    const Ref<TVector<Ref<::String>>> ours = keys();
    const Ref<TVector<Ref<::String>>> theirs = dictionary->keys();
    if (!ours || !theirs || ours->size() != theirs->size())
        return false;
    // Both lists are sorted, so equal dictionaries have their keys at the same positions.
    for (std::size_t i = 0; i < ours->size(); ++i) {
        const Ref<::String> key = ours->get(i);
        if (!key || !key->equals(theirs->get(i)))
            return false;
        const Ref<Value> value = find(key);
        if (!value || !value->equal(dictionary->find(key)))
            return false;
    }
    return true;
}

Ref<TVector<Ref<::String>>> DictionaryObj::keys() const noexcept
{
    std::vector<Ref<::String>> result;
    result.reserve(_entries.size());
    _entries.forEach([&result](const Ref<::String>& key, const Ref<Value>&) {
        result.push_back(key);
        return true;
    });
    return make<TVector<Ref<::String>>>(std::move(result));
}

Ref<Value> DictionaryObj::find(Ref<::String> key) const noexcept
{
    if (!isUsableKey(key))
        return nullptr;
    if (const Ref<Value>* value = _entries.find(*key))
        return *value;
    return refuse(ErrNotAvailable);
}

bool DictionaryObj::set(Ref<::String> key, Ref<Value> value) noexcept
{
    if (!isUsableKey(key))
        return false;
    _entries.set(std::move(key), std::move(value));
    _changed = true;
    return true;
}

bool DictionaryObj::changed() const noexcept
{
    return _changed
        || !_entries.forEach([](const Ref<::String>&, const Ref<Value>& value) { return !value->changed(); });
}

} // namespace Libraries::Files::PDF
