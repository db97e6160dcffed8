#pragma once

#include <forms/Field.h>
#include <platform/Reporter.h>
#include <platform/StrConv.h>
#include <values/String.h>

namespace Libraries::Files::PDF {

// Whether a field at `index` among its siblings answers to `name`.
inline bool answersTo(const Field& field, std::uint64_t index, const Ref<::String>& name) noexcept
{
    const Ref<String> ownName = field.name();
    return name->equals(ownName ? ownName->asText() : StrConv::str(index));
}

// The first of `count` fields that answers to `name`; `fieldAt` gives the one at an index. The codes are
// those of `Form::fieldByName`.
template <class FieldAt>
Ref<Field> findField(const Ref<::String>& name, std::uint64_t count, FieldAt fieldAt) noexcept
{
    if (!name)
        return refuse(ErrNullArgument);
    if (name->isEmpty())
        return refuse(ErrInvalidArgument);
    for (std::uint64_t i = 0; i < count; ++i)
        if (Ref<Field> field = fieldAt(i); answersTo(*field, i, name))
            return field;
    return refuse(ErrNoEntry);
}

} // namespace Libraries::Files::PDF
