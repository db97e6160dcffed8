#include <values/DictionaryObj.h>

#include <platform/StringPrinter.h>
#include <values/TypedAccess.h>

#include <algorithm>

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

bool isBefore(const DictionaryObj::Entry& a, const DictionaryObj::Entry& b)
{
    return a.key->compare(*b.key) < 0;
}

// Equal keys keep their order. Most dictionaries are small, and sorted with no memory beside.
void sortByKey(DictionaryObj::Entries& entries)
{
    constexpr std::size_t small = 16;
    if (entries.size() > small)
        return std::stable_sort(entries.begin(), entries.end(), isBefore);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        std::rotate(std::upper_bound(entries.begin(), entry, *entry, isBefore), entry, entry + 1);
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

DictionaryObj::DictionaryObj(Entries entries) noexcept : ValueObj(kind), _entries(std::move(entries))
{
    const auto isNotBefore = [](const Entry& a, const Entry& b) { return !isBefore(a, b); };
    if (std::adjacent_find(_entries.begin(), _entries.end(), isNotBefore) == _entries.end())
        return;
    sortByKey(_entries);
    // Of a run of equal keys the last one stays: walked from the back, it comes first.
    const auto isSame = [](const Entry& a, const Entry& b) { return a.key->compare(*b.key) == 0; };
    const auto firstKept = std::unique(_entries.rbegin(), _entries.rend(), isSame).base();
    _entries.erase(_entries.begin(), firstKept);
}

std::size_t DictionaryObj::place(const ::String& key) const noexcept
{
    const auto found = std::lower_bound(_entries.begin(), _entries.end(), key,
        [](const Entry& entry, const ::String& sought) { return entry.key->compare(sought) < 0; });
    return static_cast<std::size_t>(found - _entries.begin());
}

bool DictionaryObj::isAt(std::size_t index, const ::String& key) const noexcept
{
    return index < _entries.size() && _entries[index].key->compare(key) == 0;
}

Ref<TVector<Ref<::String>>> DictionaryObj::keys() const noexcept
{
    std::vector<Ref<::String>> result;
    result.reserve(_entries.size());
    for (const Entry& entry : _entries)
        result.push_back(entry.key);
    return make<TVector<Ref<::String>>>(std::move(result));
}

Ref<Value> DictionaryObj::find(Ref<::String> key) const noexcept
{
    if (!isUsableKey(key))
        return nullptr;
    const std::size_t index = place(*key);
    if (!isAt(index, *key))
        return refuse(ErrNotAvailable);
    return _entries[index].value;
}

bool DictionaryObj::set(Ref<::String> key, Ref<Value> value) noexcept
{
    if (!isUsableKey(key))
        return false;
    // What is built in key order, as a copy is, appends without a search.
    const bool isLast = _entries.empty() || _entries.back().key->compare(*key) < 0;
    const std::size_t index = isLast ? _entries.size() : place(*key);
    const bool isThere = isAt(index, *key);
    if (isThere && value)
        _entries[index].value = std::move(value);
    else if (isThere)
        _entries.erase(_entries.begin() + static_cast<std::ptrdiff_t>(index));
    else if (value)
        _entries.insert(
            _entries.begin() + static_cast<std::ptrdiff_t>(index), {std::move(key), std::move(value)});
    _changed = true;
    return true;
}

bool DictionaryObj::changed() const noexcept
{
    return _changed
        || std::any_of(_entries.begin(), _entries.end(), [](const Entry& entry) { return entry.value->changed(); });
}

} // namespace Libraries::Files::PDF
