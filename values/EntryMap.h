#pragma once

#include <platform/Pool.h>
#include <values/KeyOrder.h>
#include <values/Value.h>

#include <algorithm>
#include <map>
#include <memory>
#include <variant>
#include <vector>

namespace Libraries::Files::PDF {

// The entries of a dictionary, ascending by key, no key twice. They begin as a sorted list, which is small, and
// fast to walk and to append to. The first change that would move more than a few of its entries makes them a
// tree, so that any sequence of changes takes n log n.
class EntryMap {
public:
    struct Entry {
        Ref<::String> key;
        Ref<Value> value;
    };
    using List = std::vector<Entry, PoolAllocator<Entry>>;

    EntryMap() noexcept = default;
    // Of entries in any order, whose keys and values aren't null; of those with the same key the last one stays.
    explicit EntryMap(List&& entries) noexcept;

    std::size_t size() const noexcept;
    // Where the value is until the next change; null when there is none.
    const Ref<Value>* find(const ::String& key) const noexcept;
    // Puts the value under the key, or removes the entry if the value is null; there need not be one.
    void set(Ref<::String> key, Ref<Value> value) noexcept;

    // Calls `visit` with key and value of each entry in order until it answers false; then false.
    template <class Visitor>
    bool forEach(Visitor visit) const noexcept
    {
        if (const List* list = std::get_if<List>(&_entries))
            return std::all_of(list->begin(), list->end(),
                [&visit](const Entry& entry) { return visit(entry.key, entry.value); });
        const Tree& tree = **std::get_if<TreeHolder>(&_entries);
        return std::all_of(
            tree.begin(), tree.end(), [&visit](const auto& entry) { return visit(entry.first, entry.second); });
    }

private:
    using Tree = std::map<Ref<::String>, Ref<Value>, KeyOrder,
        PoolAllocator<std::pair<const Ref<::String>, Ref<Value>>>>;
    using TreeHolder = std::unique_ptr<Tree>; // never null

    static void setInTree(Tree& tree, Ref<::String> key, Ref<Value> value) noexcept;

    [[no_unique_address]] std::variant<List, TreeHolder> _entries;
};

} // namespace Libraries::Files::PDF
