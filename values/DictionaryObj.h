#pragma once

#include <values/Dictionary.h>
#include <values/EntryMap.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class DictionaryObj final : public ValueObj, public virtual Dictionary {
public:
    using Entries = EntryMap::List;

    DictionaryObj() noexcept : ValueObj(kind) {}
    // A dictionary fresh from a file, which counts as unchanged. The entries come in the order of the
    // file, with keys and values that aren't null; of those with the same key the last one stays.
    explicit DictionaryObj(Entries&& entries) noexcept : ValueObj(kind), _entries(std::move(entries)) {}

    // Dictionary
    Ref<TVector<Ref<::String>>> keys() const noexcept override;
    Ref<Value> find(Ref<::String> key) const noexcept override;
    bool set(Ref<::String> key, Ref<Value> value) noexcept override;
    bool changed() const noexcept override;

    const EntryMap& entries() const noexcept { return _entries; }
    // Clears the flag of this dictionary; changes of the values in it still count.
    void resetChanged() noexcept { _changed = false; }

private:
    [[no_unique_address]] EntryMap _entries; // leaves room in its last word for the flag
    bool _changed = false;
};

} // namespace Libraries::Files::PDF
