#include <values/EntryMap.h>

namespace Libraries::Files::PDF {

namespace {

using Entry = EntryMap::Entry;
using List = EntryMap::List;

bool isBefore(const Entry& a, const Entry& b)
{
    return a.key->compare(*b.key) < 0;
}

// Equal keys keep their order. Most dictionaries are small, and sorted with no memory beside.
void sortByKey(List& entries)
{
    constexpr std::size_t small = 16;
    if (entries.size() > small)
        return std::stable_sort(entries.begin(), entries.end(), isBefore);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        std::rotate(std::upper_bound(entries.begin(), entry, *entry, isBefore), entry, entry + 1);
}

// Of a run of equal keys the last one stays.
void sortAndThin(List& entries)
{
    const auto isNotBefore = [](const Entry& a, const Entry& b) { return !isBefore(a, b); };
    if (std::adjacent_find(entries.begin(), entries.end(), isNotBefore) == entries.end())
        return;
    sortByKey(entries);
    // Walked from the back, the last one of a run comes first.
    const auto isSame = [](const Entry& a, const Entry& b) { return a.key->compare(*b.key) == 0; };
    const auto firstKept = std::unique(entries.rbegin(), entries.rend(), isSame).base();
    entries.erase(entries.begin(), firstKept);
}

// Where the key is, or belongs.
template <class List>
auto placeOf(List& list, const ::String& key)
{
    return std::lower_bound(list.begin(), list.end(), key,
        [](const Entry& entry, const ::String& sought) { return entry.key->compare(sought) < 0; });
}

} // namespace

EntryMap::EntryMap(List&& entries) noexcept : _entries(std::move(entries))
{
    sortAndThin(_entries);
}

const Ref<Value>* EntryMap::find(const ::String& key) const noexcept
{
    const auto place = placeOf(_entries, key);
    return place != _entries.end() && place->key->compare(key) == 0 ? &place->value : nullptr;
}

void EntryMap::set(Ref<::String> key, Ref<Value> value) noexcept
{
    // What is built in key order, as a copy is, appends without a search.
    const bool isLast = _entries.empty() || _entries.back().key->compare(*key) < 0;
    const auto place = isLast ? _entries.end() : placeOf(_entries, *key);
    const bool isThere = !isLast && place->key->compare(*key) == 0;
    if (isThere && value)
        place->value = std::move(value);
    else if (isThere)
        _entries.erase(place);
    else if (value)
        _entries.insert(place, {std::move(key), std::move(value)});
}

} // namespace Libraries::Files::PDF
