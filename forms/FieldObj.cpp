#include <forms/FieldObj.h>

#include <forms/Attributes.h>
#include <forms/FieldFactory.h>
#include <forms/FieldLookup.h>
#include <forms/FormKeys.h>
#include <values/Array.h>
#include <values/Number.h>

namespace Libraries::Files::PDF {

namespace {

// The attributes: key, kind and bit.
constexpr Attribute<String> nameAttribute{FormKeys::name, 0};
constexpr Attribute<String> alternateNameAttribute{FormKeys::alternateName, 1};
constexpr Attribute<String> mappingNameAttribute{FormKeys::mappingName, 2};
constexpr Attribute<Dictionary> defaultResourcesAttribute{FormKeys::defaultResources, 3};
constexpr Attribute<String> defaultAppearanceAttribute{FormKeys::defaultAppearance, 4};
constexpr Attribute<Number> quaddingAttribute{FormKeys::quadding, 5};

Field::Quadding quaddingOf(std::int64_t number)
{
    switch (number) {
    case 0:
        return Field::Quadding::Left;
    case 1:
        return Field::Quadding::Centred;
    case 2:
        return Field::Quadding::Right;
    default:
        formReport.line("Unexpected quadding value: ", number);
        return Field::Quadding::NotSet;
    }
}

} // namespace

Ref<Field> Field::fieldByName(Ref<::String> name) const noexcept
{
    return findField(name, childCount(), [this](std::uint64_t index) { return child(index); });
}

FieldObj::FieldObj(FieldBuild& build, Type type, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept
    : _parent(parent.get()), _type(type), _dict(std::move(dictionary))
{
    if (const Ref<Number> number = _dict->findAsNumber(FormKeys::flags, true))
        _flags = static_cast<Flags>(number->intPart());
    // The children get a `Ref` to this object while nobody holds it yet.
    lockRef();
    _valid = createFields(build, _dict->findAsArray(FormKeys::kids, true), Ref<Field>(this), _children);
    unlockRef();
}

FieldObj::~FieldObj() noexcept = default;

Ref<Field> FieldObj::child(std::uint64_t index) const noexcept
{
    if (index >= _children.size())
        return refuse(ErrOutOfRange);
    return _children[index];
}

Ref<String> FieldObj::name() const noexcept
{
    return readAttribute(*_dict, _cached, nameAttribute, _name);
}

Ref<String> FieldObj::alternateName() const noexcept
{
    return readAttribute(*_dict, _cached, alternateNameAttribute, _alternateName);
}

Ref<String> FieldObj::mappingName() const noexcept
{
    return readAttribute(*_dict, _cached, mappingNameAttribute, _mappingName);
}

bool FieldObj::setAppearance(Ref<Value> value) noexcept
{
    return _dict->set(FormKeys::appearance, std::move(value));
}

Ref<Value> FieldObj::appearance() const noexcept
{
    return _dict->find(FormKeys::appearance);
}

Ref<Dictionary> FieldObj::defaultResources() const noexcept
{
    return readAttribute(*_dict, _cached, defaultResourcesAttribute, _defaultResources);
}

Ref<String> FieldObj::defaultAppearance() const noexcept
{
    return readAttribute(*_dict, _cached, defaultAppearanceAttribute, _defaultAppearance);
}

Field::Quadding FieldObj::quadding() const noexcept
{
    readAttribute(*_dict, _cached, quaddingAttribute,
        [this](const Ref<Number>& number) { _quadding = quaddingOf(number->intPart()); });
    return _quadding;
}

Ref<::String> FieldObj::fieldLogName() const noexcept
{
    // The caller asked for no lookup, and must not find the code of one.
    const std::uint32_t code = Error::get();
    const Ref<String> ownName = name();
    Ref<::String> text = ownName ? ownName->asText() : ::String::create("<unknown>");
    Error::set(code);
    return text;
}

} // namespace Libraries::Files::PDF
