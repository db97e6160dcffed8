#include <host/fields/FormFields.h>

#include <document/Resolve.h>
#include <forms/FormKeys.h>
#include <host/fields/FieldReading.h>
#include <host/fields/FieldTree.h>
#include <host/fields/TextString.h>
#include <host/fields/WidgetPlaces.h>
#include <host/pages/Geometry.h>
#include <host/streams/StreamBytes.h>
#include <platform/ConstantText.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/Number.h>
#include <values/Stream.h>

#include <set>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText rectangle{"Rect"};

Field::Quadding quaddingOf(const FieldEntries& entries)
{
    const Ref<Number> number = entries.as<Number>(Inherited::Quadding);
    if (!number || number->intPart() < 0 || number->intPart() > 2)
        return Field::Quadding::NotSet;
    return static_cast<Field::Quadding>(number->intPart() + 1);
}

// Reads fields, one after the other, as far as the budget goes.
class Listing {
public:
    Listing(const Ref<Document>& document, Budget& budget) noexcept
        : _document(document), _places(document), _budget(budget)
    {
    }

    FormField describe(const FieldNode& node)
    {
        FormField field;
        field.path = node.path;
        field.kind = kindOf(node.entries);
        field.flags = flagsOf(node.entries);
        field.maxLength = maxLengthOf(node.entries);
        field.quadding = quaddingOf(node.entries);
        for (const Ref<Dictionary>& widget : node.widgets)
            field.widgets.push_back(describeWidget(*widget, field.kind));
        field.isSigned = isSigned(node.entries);
        if (!_budget.isExceeded())
            describeTexts(node, field);
        return field;
    }

private:
    void describeTexts(const FieldNode& node, FormField& field)
    {
        if (field.kind != FieldKind::Signature) {
            field.value = textsOf(node.entries[Inherited::Value]);
            field.defaultValue = textsOf(node.entries[Inherited::DefaultValue]);
        }
        field.options = optionsOf(*_document, node.entries, _budget);
        field.states = statesOfAll(field.widgets);
        if (const auto tooltip = resolveEntryAs<PDF::String>(*_document, *node.dictionary, FormKeys::alternateName))
            field.tooltip = textWithin(_budget, *tooltip);
        if (const auto appearance = node.entries.as<PDF::String>(Inherited::DefaultAppearance))
            field.defaultAppearance = textWithin(_budget, *appearance);
    }

    FormWidget describeWidget(const Dictionary& widget, FieldKind kind)
    {
        FormWidget result;
        if (auto place = _places.find(widget)) {
            result.page = place->number;
            result.pageObject = std::move(place->page);
        }
        result.rectangle = rectangleOf(*_document, widget.find(rectangle));
        if (kind == FieldKind::CheckBox || kind == FieldKind::RadioButtons)
            for (const Ref<::String>& state : statesOf(*_document, widget, _budget))
                if (std::string name = textWithin(_budget, *state); !_budget.isExceeded())
                    result.states.push_back(std::move(name));
        return result;
    }

    // Those of all widgets, each once.
    std::vector<std::string> statesOfAll(const std::vector<FormWidget>& widgets)
    {
        std::vector<std::string> states;
        std::set<std::string> known;
        for (const FormWidget& widget : widgets)
            for (const std::string& state : widget.states)
                if (known.insert(state).second)
                    states.push_back(state);
        return states;
    }

    std::optional<FieldTexts> textsOf(const Ref<Value>& value)
    {
        const Ref<Array> array = valueAs<Array>(value);
        if (!array) {
            auto text = textOfValue(value);
            return text ? std::optional<FieldTexts>({std::move(*text)}) : std::nullopt;
        }
        FieldTexts result;
        for (std::uint64_t i = 0; i < array->size() && _budget.spend(Cost::Steps, 1) && !_budget.isExceeded(); ++i)
            if (auto text = textOfValue(resolve(*_document, array->get(i))))
                result.push_back(std::move(*text));
        return result;
    }

    std::optional<std::string> textOfValue(const Ref<Value>& value)
    {
        if (const auto string = valueAs<PDF::String>(value))
            return textWithin(_budget, *string);
        if (const auto name = valueAs<Name>(value))
            return name->value() ? std::optional(textWithin(_budget, *name->value())) : std::nullopt;
        if (const auto stream = valueAs<Stream>(value))
            return textOfStream(stream);
        return {};
    }

    // A long text may be a stream; none when its data can't be had, or is too much.
    std::optional<std::string> textOfStream(const Ref<Stream>& stream)
    {
        std::string bytes;
        const auto copied = copyStream(
            _document, stream, StreamForm::Decoded, _budget, [&](const std::uint8_t* data, std::size_t count) {
                bytes.append(reinterpret_cast<const char*>(data), count);
                return _budget.spend(Cost::Texts, count);
            });
        return copied ? std::optional(textOfBytes(bytes)) : std::nullopt;
    }

    const Ref<Document> _document;
    const WidgetPlaces _places;
    Budget& _budget;
};

} // namespace

Result<FormFields> listFields(const Ref<Document>& document, std::uint64_t limitFactor) noexcept
{
    Budget budget(document, limitFactor);
    Result<FieldTree> tree = FieldTree::build(document, budget);
    if (!tree)
        return tree.refusal();
    FormFields result{{}, tree->skipped()};
    if (tree->fields().empty())
        return result;
    Listing listing(document, budget);
    for (const FieldNode& node : tree->fields())
        result.fields.push_back(listing.describe(node));
    if (budget.isExceeded())
        result.skipped.push_back("further texts are left out: " + budget.refusal().message);
    return result;
}

} // namespace Host
