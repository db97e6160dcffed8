#pragma once

#include <platform/Pool.h>
#include <platform/String.h>
#include <values/Value.h>

#include <algorithm>
#include <vector>

namespace Libraries::Files::PDF {

// The entries of a dictionary, ascending by key, no key twice.
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

    std::size_t size() const noexcept { return _entries.size(); }
    // Where the value is until the next change; null when there is none.
    const Ref<Value>* find(const ::String& key) const noexcept;
    // Puts the value under the key, or removes the entry if the value is null; there need not be one.
    void set(Ref<::String> key, Ref<Value> value) noexcept;

    // Calls `visit` with key and value of each entry in order until it answers false; then false.
    template <class Visitor>
    bool forEach(Visitor visit) const noexcept
    {
        return std::all_of(_entries.begin(), _entries.end(),
            [&visit](const Entry& entry) { return visit(entry.key, entry.value); });
    }

private:
    List _entries;
};

} // namespace Libraries::Files::PDF
