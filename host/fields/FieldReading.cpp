#include <host/fields/FieldReading.h>

#include <document/Resolve.h>
#include <forms/Field.h>
#include <forms/FormKeys.h>
#include <host/base/Keys.h>
#include <host/fields/TextString.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/Number.h>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

FieldKind buttonKind(std::uint32_t flags)
{
    if (flags & Field::Pushbutton)
        return FieldKind::PushButton;
    return flags & Field::Radio ? FieldKind::RadioButtons : FieldKind::CheckBox;
}

std::string textAt(const Document& document, const Array& array, std::uint64_t index)
{
    const auto text = resolveAs<PDF::String>(document, array.get(index));
    return text ? textOf(*text) : std::string();
}

FieldOption optionOf(const Document& document, const Ref<Value>& value)
{
    if (const auto text = valueAs<PDF::String>(value))
        return {textOf(*text), textOf(*text)};
    if (const auto pair = valueAs<Array>(value))
        return {textAt(document, *pair, 0), textAt(document, *pair, 1)};
    return {};
}

} // namespace

FieldKind kindOf(const FieldEntries& entries) noexcept
{
    const Ref<Name> type = entries.as<Name>(Inherited::FieldType);
    const Ref<::String> text = type ? type->value() : nullptr;
    if (!text)
        return FieldKind::Unknown;
    if (text->equals("Tx"))
        return FieldKind::Text;
    if (text->equals("Btn"))
        return buttonKind(flagsOf(entries));
    if (text->equals("Ch"))
        return flagsOf(entries) & Field::Combo ? FieldKind::ComboBox : FieldKind::ListBox;
    return text->equals("Sig") ? FieldKind::Signature : FieldKind::Unknown;
}

std::uint32_t flagsOf(const FieldEntries& entries) noexcept
{
    const Ref<Number> flags = entries.as<Number>(Inherited::Flags);
    return flags ? static_cast<std::uint32_t>(flags->intPart()) : 0;
}

std::optional<std::int64_t> maxLengthOf(const FieldEntries& entries) noexcept
{
    const Ref<Number> limit = entries.as<Number>(Inherited::MaxLength);
    return limit ? std::optional(limit->intPart()) : std::nullopt;
}

std::vector<FieldOption> optionsOf(const Document& document, const FieldEntries& entries) noexcept
{
    const Ref<Array> list = entries.as<Array>(Inherited::Options);
    std::vector<FieldOption> options;
    for (std::uint64_t i = 0; list && i < list->size(); ++i)
        options.push_back(optionOf(document, resolve(document, list->get(i))));
    return options;
}

std::vector<Ref<::String>> statesOf(const Document& document, const Dictionary& widget) noexcept
{
    const auto appearance = resolveEntryAs<Dictionary>(document, widget, FormKeys::appearance);
    if (!appearance)
        return {};
    const auto normal = resolveEntryAs<Dictionary>(document, *appearance, FormKeys::normalAppearance);
    if (!normal)
        return {};
    std::vector<Ref<::String>> states = keysOf(*normal);
    std::erase_if(states, [](const Ref<::String>& key) { return key->equals("Off"); });
    return states;
}

bool isSigned(const FieldEntries& entries) noexcept
{
    return kindOf(entries) == FieldKind::Signature && entries[Inherited::Value];
}

} // namespace Host
