#include <values/EntryMap.h>

namespace Libraries::Files::PDF {

namespace {

using Entry = EntryMap::Entry;
using List = EntryMap::List;

// How many entries of a list one change may move: about as many as cost what a change of a tree does.
constexpr std::ptrdiff_t maxMoves = 128;

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

// Takes key and value over, or answers false, with nothing done, when too many entries would move.
bool setInList(List& list, Ref<::String>& key, Ref<Value>& value)
{
    // What is built in key order, as a copy is, appends without a search.
    const bool isLast = list.empty() || list.back().key->compare(*key) < 0;
    const auto place = isLast ? list.end() : placeOf(list, *key);
    const bool isThere = !isLast && place->key->compare(*key) == 0;
    if (isThere && value) {
        place->value = std::move(value);
        return true;
    }
    if (!isThere && !value)
        return true;
    if (list.end() - place > maxMoves)
        return false;
    if (value)
        list.insert(place, {std::move(key), std::move(value)});
    else
        list.erase(place);
    return true;
}

} // namespace

EntryMap::EntryMap(List&& entries) noexcept : _entries(std::move(entries))
{
    sortAndThin(*std::get_if<List>(&_entries));
}

std::size_t EntryMap::size() const noexcept
{
    const List* list = std::get_if<List>(&_entries);
    return list ? list->size() : (*std::get_if<TreeHolder>(&_entries))->size();
}

const Ref<Value>* EntryMap::find(const ::String& key) const noexcept
{
    if (const List* list = std::get_if<List>(&_entries)) {
        const auto place = placeOf(*list, key);
        return place != list->end() && place->key->compare(key) == 0 ? &place->value : nullptr;
    }
    const Tree& tree = **std::get_if<TreeHolder>(&_entries);
    const auto place = tree.find(key);
    return place != tree.end() ? &place->second : nullptr;
}

void EntryMap::set(Ref<::String> key, Ref<Value> value) noexcept
{
    if (List* list = std::get_if<List>(&_entries)) {
        if (setInList(*list, key, value))
            return;
        auto tree = std::make_unique<Tree>();
        for (Entry& entry : *list)
            tree->emplace_hint(tree->end(), std::move(entry.key), std::move(entry.value));
        _entries = std::move(tree);
    }
    setInTree(**std::get_if<TreeHolder>(&_entries), std::move(key), std::move(value));
}

void EntryMap::setInTree(Tree& tree, Ref<::String> key, Ref<Value> value) noexcept
{
    const auto place = tree.lower_bound(*key);
    const bool isThere = place != tree.end() && place->first->compare(*key) == 0;
    if (isThere && value)
        place->second = std::move(value);
    else if (isThere)
        tree.erase(place);
    else if (value)
        tree.emplace_hint(place, std::move(key), std::move(value));
}

} // namespace Libraries::Files::PDF
