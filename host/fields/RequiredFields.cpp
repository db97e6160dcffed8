#include <host/fields/RequiredFields.h>

#include <forms/Field.h>
#include <host/base/Following.h>
#include <host/fields/FieldReading.h>
#include <host/fields/FillWarnings.h>
#include <host/fields/TextString.h>
#include <values/Array.h>
#include <values/String.h>

namespace Host {

namespace {

bool isRequired(const FieldEntries& entries)
{
    const FieldKind kind = kindOf(entries);
    return (flagsOf(entries) & PDF::Field::Required) && kind != FieldKind::PushButton && kind != FieldKind::Signature
        && kind != FieldKind::Unknown;
}

bool isEmpty(const Ref<PDF::Value>& value)
{
    const auto text = PDF::valueAs<PDF::String>(value);
    const auto list = PDF::valueAs<PDF::Array>(value);
    return !value || isNamed(value, "Off") || (text && textOf(*text).empty()) || (list && list->size() == 0);
}

} // namespace

RequiredFields::RequiredFields(const FieldTree& tree) noexcept : _tree(tree)
{
    for (std::size_t i = 0; i < tree.fields().size(); ++i)
        noteFilled(i, isEmpty(tree.fields()[i].entries[Inherited::Value]));
}

void RequiredFields::noteFilled(std::size_t field, bool isEmpty) noexcept
{
    if (!isEmpty)
        _empty.erase(field);
    else if (isRequired(_tree.fields()[field].entries))
        _empty.insert(field);
}

std::string RequiredFields::warning() const noexcept
{
    return _empty.empty() ? "" : "required fields are empty: " + FillWarnings::listed(_tree, _empty);
}

} // namespace Host
