#include <host/fields/FieldEntries.h>

#include <forms/FormKeys.h>
#include <values/Object.h>
#include <values/ObjectRef.h>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// By `Inherited`.
const Ref<::String>* const inheritedKeys[] = {&FormKeys::fieldType, &FormKeys::flags, &FormKeys::value,
    &FormKeys::defaultValue, &FormKeys::defaultAppearance, &FormKeys::quadding, &FormKeys::maxLength,
    &FormKeys::options};
static_assert(std::size(inheritedKeys) == std::size_t(Inherited::Count));

} // namespace

void FieldEntries::override(const Document& document, const Dictionary& own) noexcept
{
    for (std::size_t i = 0; i < _values.size(); ++i)
        if (Ref<Value> value = followed(document, own.find(*inheritedKeys[i])))
            _values[i] = std::move(value);
}

void FieldEntries::complete(const FieldEntries& others) noexcept
{
    for (std::size_t i = 0; i < _values.size(); ++i)
        if (!_values[i])
            _values[i] = others._values[i];
}

Ref<Value> followed(const Document& document, const Ref<Value>& value) noexcept
{
    Ref<Value> end = value;
    if (Ref<ObjectRef> reference = valueAs<ObjectRef>(value)) {
        const Ref<PDF::Object> object = document.object(std::move(reference));
        end = object ? object->value() : nullptr;
    }
    return end && end->type() != Value::Type::Null ? end : nullptr;
}

} // namespace Host
