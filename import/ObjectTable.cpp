#include <import/ObjectTable.h>

#include <algorithm>

namespace Import {

ObjectTable::ObjectTable(QPDF& document)
{
    const std::map<QPDFObjGen, QPDFXRefEntry> table = document.getXRefTable();
    _entries.reserve(table.size());
    for (const auto& [object, entry] : table) {
        if (entry.getType() == 1)
            _entries.push_back({object.getObj(), object.getGen(), false, entry.getOffset()});
        else if (entry.getType() == 2)
            _entries.push_back({object.getObj(), object.getGen(), true, entry.getObjStreamNumber()});
    }
}

const ObjectTable::Entry* ObjectTable::find(int id, int generation) const noexcept
{
    const Entry wanted{id, generation, false, 0};
    const auto found = std::lower_bound(_entries.begin(), _entries.end(), wanted);
    return found == _entries.end() || wanted < *found ? nullptr : &*found;
}

} // namespace Import
