#include <host/fields/FieldRemoval.h>

#include <document/Resolve.h>
#include <forms/FormKeys.h>
#include <platform/Limits.h>
#include <values/Array.h>

#include <unordered_map>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

class Removal {
public:
    Removal(Edit& edit, const std::unordered_set<const Dictionary*>& gone) : _edit(edit), _gone(gone) {}

    // Takes them out of a list under the key, and whether something is left there.
    bool thin(const Ref<Dictionary>& owner, const Ref<::String>& key, std::size_t level)
    {
        const Ref<Array> array = resolveEntryAs<Array>(*_edit.document(), *owner, key);
        if (!array)
            return false;
        const auto [known, isNew] = _lists.try_emplace(array.get());
        if (isNew) {
            const List list = thinned(*array, level);
            _lists[array.get()] = list;
        }
        const List& list = _lists[array.get()];
        if (list.isChanged)
            _edit.set(owner, key, list.rest);
        return !list.isChanged || list.rest;
    }

private:
    enum class Outcome { Stays, Goes, Pending }; // that of a field whose kids are being walked
    // What becomes of a list, which fields may share.
    struct List {
        bool isChanged = false;
        Ref<Array> rest; // null when nothing is left
    };

    List thinned(const Array& array, std::size_t level)
    {
        std::vector<Ref<Value>> rest;
        bool isChanged = false;
        for (std::uint64_t i = 0; i < array.size(); ++i) {
            const Outcome outcome = outcomeOf(resolveAs<Dictionary>(*_edit.document(), array.get(i)), level);
            isChanged |= outcome == Outcome::Goes;
            if (outcome == Outcome::Stays)
                rest.push_back(array.get(i));
        }
        return {isChanged, rest.empty() ? Ref<Array>() : Array::create(rest)};
    }
    // A field goes itself, or since all below goes. One that leads back to a field above is no reason to stay.
    Outcome outcomeOf(const Ref<Dictionary>& field, std::size_t level)
    {
        if (!field || level > Limits::maxFieldLevels)
            return Outcome::Stays;
        if (_gone.contains(field.get()))
            return Outcome::Goes;
        const auto [known, isNew] = _outcomes.try_emplace(field.get(), Outcome::Pending);
        if (!isNew)
            return known->second;
        const bool isLeaf = !resolveEntryAs<Array>(*_edit.document(), *field, FormKeys::kids);
        const bool isStaying = isLeaf || thin(field, FormKeys::kids, level + 1);
        return _outcomes[field.get()] = isStaying ? Outcome::Stays : Outcome::Goes;
    }

    Edit& _edit;
    const std::unordered_set<const Dictionary*>& _gone;
    std::unordered_map<const Dictionary*, Outcome> _outcomes;
    std::unordered_map<const Array*, List> _lists;
};

} // namespace

bool removeFields(
    Edit& edit, const Ref<Dictionary>& form, const std::unordered_set<const Dictionary*>& gone) noexcept
{
    Removal removal(edit, gone);
    const bool hasFields = removal.thin(form, FormKeys::fields, 1);
    removal.thin(form, FormKeys::calculationOrder, 1);
    return hasFields;
}

} // namespace Host
