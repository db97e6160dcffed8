#include <forms/FormObj.h>

#include <forms/Attributes.h>
#include <forms/FieldFactory.h>
#include <forms/FieldLookup.h>
#include <forms/FormKeys.h>
#include <platform/StringUtil.h>
#include <values/Array.h>
#include <values/Boolean.h>
#include <values/Number.h>

namespace Libraries::Files::PDF {

namespace {

// The attributes: key, kind and bit.
constexpr Attribute<Number> quaddingAttribute{FormKeys::quadding, 0};
constexpr Attribute<String> defaultAppearanceAttribute{FormKeys::defaultAppearance, 1};
constexpr Attribute<Dictionary> defaultResourcesAttribute{FormKeys::defaultResources, 2};
constexpr Attribute<Array> calculationOrderAttribute{FormKeys::calculationOrder, 3};
constexpr Attribute<Boolean> needAppearancesAttribute{FormKeys::needAppearances, 4};

} // namespace

Ref<Field> Form::fieldByName(Ref<::String> name) const noexcept
{
    return findField(name, fieldCount(), [this](std::uint64_t index) { return field(index); });
}

Ref<Field> Form::fieldByPath(Ref<::String> path) const noexcept
{
    if (!path)
        return refuse(ErrNullArgument);
    const Ref<TVector<Ref<::String>>> names = StringUtil::split(path, '.', 0);
    if (names->size() == 0)
        return refuse(ErrInvalidArgument);
    Ref<Field> found = fieldByName(names->get(0));
    for (std::size_t i = 1; found && i < names->size(); ++i)
        found = found->fieldByName(names->get(i));
    return found;
}

FormObj::FormObj(Ref<Document> document, Ref<Dictionary> dictionary, std::uint64_t maxFields) noexcept
    : _dict(std::move(dictionary))
{
    FieldBuild build(std::move(document), maxFields);
    _valid = createFields(build, _dict->findAsArray(FormKeys::fields, false), nullptr, _fields);
}

FormObj::~FormObj() noexcept = default;

bool FormObj::needAppearances() const noexcept
{
    readAttribute(*_dict, _cached, needAppearancesAttribute,
        [this](const Ref<Boolean>& value) { _needAppearances = value->value(); });
    return _needAppearances;
}

Ref<Number> FormObj::quadding() const noexcept
{
    return readAttribute(*_dict, _cached, quaddingAttribute, _quadding);
}

Ref<String> FormObj::defaultAppearance() const noexcept
{
    return readAttribute(*_dict, _cached, defaultAppearanceAttribute, _defaultAppearance);
}

Ref<Dictionary> FormObj::defaultResources() const noexcept
{
    return readAttribute(*_dict, _cached, defaultResourcesAttribute, _defaultResources);
}

Ref<Array> FormObj::calculationOrder() const noexcept
{
    return readAttribute(*_dict, _cached, calculationOrderAttribute, _calculationOrder);
}

Ref<Field> FormObj::field(std::uint64_t index) const noexcept
{
    if (index >= _fields.size())
        return refuse(ErrOutOfRange);
    return _fields[index];
}

} // namespace Libraries::Files::PDF
