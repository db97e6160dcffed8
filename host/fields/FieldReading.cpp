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

constexpr std::uint64_t stepsOfName = 8; // which are decoded, and compared as texts

FieldKind buttonKind(std::uint32_t flags)
{
    if (flags & Field::Pushbutton)
        return FieldKind::PushButton;
    return flags & Field::Radio ? FieldKind::RadioButtons : FieldKind::CheckBox;
}

std::string textAt(const Document& document, const Array& array, std::uint64_t index, Budget& budget)
{
    const auto text = resolveAs<PDF::String>(document, array.get(index));
    return text ? textWithin(budget, *text) : std::string();
}

FieldOption optionOf(const Document& document, const Ref<Value>& value, Budget& budget)
{
    if (const auto text = valueAs<PDF::String>(value))
        return {textWithin(budget, *text), textWithin(budget, *text)};
    if (const auto pair = valueAs<Array>(value))
        return {textAt(document, *pair, 0, budget), textAt(document, *pair, 1, budget)};
    return {};
}

std::size_t lengthOf(const PDF::String& string)
{
    if (const Ref<::String> text = string.value())
        return text->length();
    const auto bytes = string.data();
    return bytes ? bytes->size() : 0;
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

std::string textWithin(Budget& budget, const PDF::String& string) noexcept
{
    return budget.spend(Cost::Texts, sizeof(std::string) + lengthOf(string)) ? textOf(string) : std::string();
}

std::string textWithin(Budget& budget, const ::String& name) noexcept
{
    return budget.spend(Cost::Texts, sizeof(std::string) + name.length()) ? textOfName(name) : std::string();
}

std::vector<FieldOption> optionsOf(const Document& document, const FieldEntries& entries, Budget& budget) noexcept
{
    const Ref<Array> list = entries.as<Array>(Inherited::Options);
    std::vector<FieldOption> options;
    for (std::uint64_t i = 0; list && i < list->size() && budget.spend(Cost::Steps, 1); ++i) {
        FieldOption option = optionOf(document, resolve(document, list->get(i)), budget);
        if (budget.left(Cost::Texts) == 0)
            break;
        options.push_back(std::move(option));
    }
    return options;
}

std::vector<Ref<::String>> statesOf(const Document& document, const Dictionary& widget, Budget& budget) noexcept
{
    const auto appearance = budget.isExceeded()
        ? nullptr
        : resolveEntryAs<Dictionary>(document, widget, FormKeys::appearance);
    if (!appearance)
        return {};
    const auto normal = resolveEntryAs<Dictionary>(document, *appearance, FormKeys::normalAppearance);
    if (!normal)
        return {};
    std::vector<Ref<::String>> states = keysOf(*normal);
    if (!budget.spend(Cost::Steps, stepsOfName * states.size()))
        return {};
    std::erase_if(states, [](const Ref<::String>& key) { return key->equals("Off"); });
    return states;
}

bool isSigned(const FieldEntries& entries) noexcept
{
    return kindOf(entries) == FieldKind::Signature && entries[Inherited::Value];
}

} // namespace Host
