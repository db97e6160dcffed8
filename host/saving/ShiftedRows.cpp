#include <host/saving/ShiftedRows.h>

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <values/Object.h>

namespace Host {

using namespace Libraries::Files::PDF;

std::vector<ShiftedRow> shiftedRows(const Ref<Document>& document, std::uint64_t first) noexcept
{
    std::vector<ShiftedRow> shifted;
    std::uint64_t row = first;
    for (const auto& object : objectsAsWritten(document))
        if (object->id() != ++row)
            shifted.push_back({object, row});
    return shifted;
}

std::string shiftedRowMessage(const ShiftedRow& shifted) noexcept
{
    return nameOf(*shifted.object) + " is written as row " + std::to_string(shifted.row)
        + " of the table: the object numbers are not consecutive from the table's first number on";
}

} // namespace Host
