#include <forms/ButtonObj.h>

#include <forms/FormKeys.h>
#include <forms/Report.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Name.h>

namespace Libraries::Files::PDF {

ButtonObj::ButtonObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept
    : FieldObj(build, Type::Button, std::move(dictionary), parent)
{
}

bool ButtonObj::setValue(Ref<Name> name) noexcept
{
    return setState(FormKeys::value, std::move(name));
}

Ref<Name> ButtonObj::value() const noexcept
{
    return dictionary().findAsName(FormKeys::value, true);
}

Ref<Name> ButtonObj::defaultValue() const noexcept
{
    return dictionary().findAsName(FormKeys::defaultValue, true);
}

bool ButtonObj::setAppearanceState(Ref<Name> name) noexcept
{
    return setState(FormKeys::appearanceState, std::move(name));
}

Ref<Name> ButtonObj::appearanceState() const noexcept
{
    return dictionary().findAsName(FormKeys::appearanceState, true);
}

Ref<Array> ButtonObj::options() const noexcept
{
    return dictionary().findAsArray(FormKeys::options, true);
}

StackVector<Ref<Name>> ButtonObj::states() const noexcept
{
    if (const Ref<Array> list = options()) {
        if (list->size() != 0)
            return statesOfOptions(*list);
        formReport.oddity("No entries in Opt array for field ", fieldLogName());
    }
    return statesOfAppearance();
}

// A push button has no value, so it takes no name; what stands there can be removed.
bool ButtonObj::setState(const Ref<::String>& key, Ref<Name> name) noexcept
{
    if (name) {
        if (flags() & Pushbutton)
            return refuse(ErrPushButton);
        const Ref<::String> text = name->value();
        if (!text || text->isEmpty())
            return refuse(ErrInvalidArgument);
    }
    return dictionary().set(key, std::move(name));
}

StackVector<Ref<Name>> ButtonObj::statesOfOptions(const Array& list) const noexcept
{
    StackVector<Ref<Name>> result;
    for (std::uint64_t i = 0; i < list.size(); ++i) {
        Ref<Name> name = list.getAsName(i);
        if (!name)
            return formReport.fail(
                ErrNoResource, "Failed to convert Opt entry ", i, " to Name for field ", fieldLogName());
        result.push_back(std::move(name));
    }
    return result;
}

StackVector<Ref<Name>> ButtonObj::statesOfAppearance() const noexcept
{
    const Ref<Dictionary> appearances = dictionary().findAsDictionary(FormKeys::appearance, false);
    if (!appearances)
        return formReport.oddity("No AP dictionary for field ", fieldLogName());
    const Ref<Dictionary> normal = appearances->findAsDictionary(FormKeys::normalAppearance, false);
    if (!normal)
        return formReport.oddity("No N dictionary in AP dictionary for field ", fieldLogName());
    // Only an application's own dictionary has no list, or keys that make no names.
    const Ref<TVector<Ref<::String>>> keys = normal->keys();
    StackVector<Ref<Name>> result;
    for (std::size_t i = 0; keys && i < keys->size(); ++i)
        if (Ref<Name> name = Name::create(keys->get(i)))
            result.push_back(std::move(name));
    if (result.empty())
        return formReport.oddity("Empty N dictionary in AP dictionary for field ", fieldLogName());
    return result;
}

} // namespace Libraries::Files::PDF
