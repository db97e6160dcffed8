#include <host/fields/FieldEntries.h>

#include <document/Resolve.h>
#include <forms/FormKeys.h>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// By `Inherited`.
constexpr const ConstantText* inheritedKeys[] = {&FormKeys::fieldType, &FormKeys::flags, &FormKeys::value,
    &FormKeys::defaultValue, &FormKeys::defaultAppearance, &FormKeys::quadding, &FormKeys::maxLength,
    &FormKeys::options};
static_assert(std::size(inheritedKeys) == std::size_t(Inherited::Count));

} // namespace

void FieldEntries::override(const Document& document, const Dictionary& own) noexcept
{
    for (std::size_t i = 0; i < _values.size(); ++i)
        if (Ref<Value> value = resolvePresent(document, own.find(*inheritedKeys[i])))
            _values[i] = std::move(value);
}

void FieldEntries::complete(const FieldEntries& others) noexcept
{
    for (std::size_t i = 0; i < _values.size(); ++i)
        if (!_values[i])
            _values[i] = others._values[i];
}

Ref<Value> resolvePresent(const Document& document, const Ref<Value>& value) noexcept
{
    Ref<Value> resolved = resolve(document, value);
    return resolved && resolved->type() != Value::Type::Null ? resolved : nullptr;
}

} // namespace Host
