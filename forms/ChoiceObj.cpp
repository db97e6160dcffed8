#include <forms/ChoiceObj.h>

#include <forms/FormKeys.h>
#include <forms/Report.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/String.h>

namespace Libraries::Files::PDF {

namespace {

// How the lines of this class name a field: deliberately by the address of its `name`, which is 0 for a
// field without one, and not by the text.
const void* addressOfName(const Field& field)
{
    return field.name().get();
}

} // namespace

ChoiceObj::ChoiceObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept
    : FieldObj(build, Type::Choice, std::move(dictionary), parent)
{
}

bool ChoiceObj::setValue(Ref<Value> value) noexcept
{
    if (value && !normalise(value))
        return false;
    return dictionary().set(FormKeys::value, std::move(value));
}

Ref<Value> ChoiceObj::value() const noexcept
{
    return dictionary().find(FormKeys::value);
}

Ref<Value> ChoiceObj::defaultValue() const noexcept
{
    return dictionary().find(FormKeys::defaultValue);
}

Ref<Array> ChoiceObj::options() const noexcept
{
    return dictionary().findAsArray(FormKeys::options, true);
}

Ref<Array> ChoiceObj::selectedIndices() const noexcept
{
    return dictionary().findAsArray(FormKeys::selectedIndices, true);
}

// Brings a new value to the form in which it is stored; false when the field can't take it.
bool ChoiceObj::normalise(Ref<Value>& value) const noexcept
{
    const bool isString = value->type() == Value::Type::String;
    if (!(flags() & MultiSelect) && !isString)
        return formReport.fail(ErrInvalidArgument,
            "Non-string value not supported for single entry choice field: ", addressOfName(*this));
    return isString || normaliseArray(value);
}

bool ChoiceObj::normaliseArray(Ref<Value>& value) const noexcept
{
    if (value->type() != Value::Type::Array)
        return formReport.fail(ErrInvalidArgument,
            "Multi-select field requires either an Array or String value: ", addressOfName(*this));
    const Ref<Array> array = value.cast<Array>();
    if (!array)
        return formReport.fail(
            ErrInvalidArgument, "Failed to cast value to array for field: ", addressOfName(*this));
    for (std::uint64_t i = 0; i < array->size(); ++i)
        if (!valueAs<String>(array->get(i)))
            return formReport.fail(
                ErrInvalidArgument, "Element ", i, " of new value is not a String for ", addressOfName(*this));
    if (array->size() == 0) {
        formReport.oddity("Assuming unset value for empty array for field: ", addressOfName(*this));
        value = nullptr;
    } else if (array->size() == 1) {
        formReport.oddity("Keeping only single value of array for field: ", addressOfName(*this));
        value = array->get(0);
    }
    return true;
}

} // namespace Libraries::Files::PDF
