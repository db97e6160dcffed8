#pragma once

#include <platform/Pool.h>
#include <values/Dictionary.h>
#include <values/ValueObj.h>

#include <vector>

namespace Libraries::Files::PDF {

class DictionaryObj final : public ValueObj, public virtual Dictionary {
public:
    struct Entry {
        Ref<::String> key;
        Ref<Value> value;
    };
    using Entries = std::vector<Entry, PoolAllocator<Entry>>;

    DictionaryObj() noexcept : ValueObj(kind) {}
    // A dictionary fresh from a file, which counts as unchanged. The entries come in the order of the
    // file, with keys and values that aren't null; of those with the same key the last one stays.
    explicit DictionaryObj(Entries entries) noexcept;

    // Dictionary
    Ref<TVector<Ref<::String>>> keys() const noexcept override;
    Ref<Value> find(Ref<::String> key) const noexcept override;
    bool set(Ref<::String> key, Ref<Value> value) noexcept override;
    bool changed() const noexcept override;

    // All entries, ascending by key.
    const Entries& entries() const noexcept { return _entries; }
    // Clears the flag of this dictionary; changes of the values in it still count.
    void resetChanged() noexcept { _changed = false; }

private:
    // Where the key stands, or belongs.
    std::size_t place(const ::String& key) const noexcept;
    bool isAt(std::size_t index, const ::String& key) const noexcept;

    Entries _entries; // ascending by key, no key twice
    bool _changed = false;
};

} // namespace Libraries::Files::PDF
