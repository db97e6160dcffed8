#pragma once

#include <platform/Reporter.h>
#include <values/KindCast.h>

namespace Libraries::Files::PDF {

// The end that all typed accessors share: a value that is there, as class `Kind`, or null with
// `ErrWrongType` and a line.
template <class Kind>
Ref<Kind> castValue(const Reporter& report, const Ref<Value>& value) noexcept
{
    if (value->type() != Kind::kind)
        return report.fail(
            ErrWrongType, "Expected value of type ", Kind::kind, ", but got one of type ", value->type());
    Kind* result = castKind<Kind>(*value);
    if (!result)
        return report.fail(ErrWrongType, "Failed to cast value to ", Kind::kindName);
    return Ref<Kind>(result);
}

} // namespace Libraries::Files::PDF
