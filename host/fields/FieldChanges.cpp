#include <host/fields/FieldChanges.h>

#include <document/Resolve.h>
#include <forms/Field.h>
#include <forms/FormKeys.h>
#include <host/fields/FieldReading.h>
#include <host/fields/TextString.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/NumberObj.h>

#include <algorithm>
#include <set>
#include <unordered_map>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText richValue{"RV"};
constinit const ConstantText topIndex{"TI"}; // the option that a list box shows first
constinit const ConstantText off{"Off"};

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

Refusal wrongValue(std::string message)
{
    return {Reason::WrongArgument, std::move(message)};
}

Refusal doesNotTake(FieldKind kind, const char* what)
{
    return wrongValue("a field of the kind " + std::string(kindLabel(kind)) + " doesn't take " + what);
}

Refusal noUtf8()
{
    return wrongValue("the value is not UTF-8");
}

// The dictionaries that carry the value of a field.
std::vector<Ref<Dictionary>> carriersOf(const FieldNode& field)
{
    std::vector<Ref<Dictionary>> carriers = {field.dictionary};
    carriers.insert(carriers.end(), field.copies.begin(), field.copies.end());
    return carriers;
}

// ---- Texts

Result<FieldUpdate> updateForText(const FieldNode& field, const FieldValue& value)
{
    const auto* text = std::get_if<std::string>(&value);
    if (!text)
        return doesNotTake(FieldKind::Text, "on, off or a list, only a text");
    const Ref<PDF::String> string = stringOf(*text);
    if (!string)
        return noUtf8();
    const std::int64_t limit = maxLengthOf(field.entries).value_or(0);
    const auto length = limit != 0 ? static_cast<std::int64_t>(lengthInUnits(*text)) : 0;
    if (limit != 0 && length > limit)
        return wrongValue("the text is too long: it has " + std::to_string(length) + " characters, and the field takes "
            + std::to_string(limit));
    FieldUpdate update;
    update.text = *text;
    update.isEmpty = text->empty();
    const bool hasBreak = text->find('\n') != text->npos || text->find('\r') != text->npos;
    if (hasBreak && !(flagsOf(field.entries) & Field::Multiline))
        update.warning = "takes one line, and the line breaks of its value are shown as blanks";
    for (const Ref<Dictionary>& carrier : carriersOf(field)) {
        update.changes.push_back({carrier, FormKeys::value, string});
        if (carrier->find(richValue))
            update.changes.push_back({carrier, richValue, nullptr});
    }
    return update;
}

// ---- Check boxes and radio buttons

// The states of the widgets, each with its text.
class ButtonStates {
public:
    ButtonStates(const Document& document, const FieldNode& field, bool isDrawn, Budget& budget)
        : _options(optionsOf(document, field.entries, budget))
    {
        for (const Ref<Dictionary>& widget : field.widgets) {
            _states.emplace_back();
            for (Ref<::String>& name : statesOf(document, *widget, budget))
                if (budget.spend(Cost::Texts, sizeof(State) + 2 * name->length()))
                    add(std::move(name));
            _drawn.emplace_back();
            if (isDrawn && !widget->find(FormKeys::appearance)) {
                _drawn.back() = field.widgets.size() == 1 ? "Yes" : std::to_string(_states.size() - 1);
                add(::String::create(_drawn.back().c_str()));
            }
        }
    }

    // By widget, the state of one that has no looks so far; empty for the others.
    const std::vector<std::string>& drawn() const { return _drawn; }

    // The text of the state that `value` means, "Off" included.
    Result<std::string> find(const FieldValue& value) const
    {
        if (const bool* isOn = std::get_if<bool>(&value))
            return *isOn ? findOn() : Result<std::string>("Off");
        const auto& text = std::get<std::string>(value);
        if (_texts.count(text))
            return text;
        if (const std::string* exported = findExported(text))
            return *exported;
        if (text == "on")
            return findOn();
        if (text == "off" || text == "Off")
            return std::string("Off");
        return wrongValue("the field has no state " + quoted(text) + ", but " + list());
    }

    // The name by which the widget has a state; "Off" when it hasn't.
    Ref<::String> nameFor(std::size_t widget, const std::string& text) const
    {
        for (const State& state : _states[widget])
            if (state.text == text)
                return state.name;
        return off;
    }

private:
    struct State {
        std::string text;
        Ref<::String> name;
    };

    void add(Ref<::String> name)
    {
        std::string text = textOfName(*name);
        _texts.insert(text);
        _states.back().push_back({std::move(text), std::move(name)});
    }

    Result<std::string> findOn() const
    {
        if (_texts.size() != 1)
            return wrongValue("\"on\" needs a field with one state, and this one has " + list());
        return *_texts.begin();
    }

    // The state of the widget that has the export value; the options are in the order of the widgets.
    const std::string* findExported(const std::string& text) const
    {
        for (std::size_t i = 0; i < _options.size() && i < _states.size(); ++i)
            if (_options[i].exported == text && !_states[i].empty())
                return &_states[i].front().text;
        return nullptr;
    }

    std::string list() const
    {
        std::string states = "\"off\"";
        for (const std::string& text : _texts)
            states += ", " + quoted(text);
        return states;
    }

    const std::vector<FieldOption> _options;
    std::vector<std::vector<State>> _states; // by widget
    std::vector<std::string> _drawn;
    std::set<std::string> _texts;
};

Result<FieldUpdate> updateForButton(
    const Document& document, const FieldNode& field, FieldKind kind, const FieldValue& value, bool isDrawn,
    Budget& budget)
{
    if (std::holds_alternative<std::vector<std::string>>(value))
        return doesNotTake(kind, "a list");
    const ButtonStates states(document, field, isDrawn, budget);
    if (budget.isExceeded())
        return budget.refusal();
    const Result<std::string> state = states.find(value);
    if (!state)
        return state.refusal();
    Ref<::String> fieldState = off;
    FieldUpdate update;
    update.drawnStates = states.drawn();
    update.isEmpty = *state == "Off";
    for (std::size_t i = 0; i < field.widgets.size(); ++i) {
        const Ref<::String> name = states.nameFor(i, *state);
        if (fieldState == off.get())
            fieldState = name;
        update.changes.push_back({field.widgets[i], FormKeys::appearanceState, Name::create(name)});
    }
    for (const Ref<Dictionary>& carrier : carriersOf(field))
        update.changes.push_back({carrier, FormKeys::value, Name::create(fieldState)});
    return update;
}

// ---- List boxes and combo boxes

// What was chosen: options by their index, or a text of the user's own.
struct Choices {
    std::set<std::size_t> indices;
    std::optional<std::string> ownText;
};

Result<Choices> choose(const FieldNode& field, const std::vector<FieldOption>& options, FieldKind kind,
    const std::vector<std::string>& texts)
{
    const std::uint32_t flags = flagsOf(field.entries);
    std::unordered_map<std::string_view, std::size_t> exported, displayed; // the first of each text
    for (std::size_t i = 0; i < options.size(); ++i) {
        exported.try_emplace(options[i].exported, i);
        displayed.try_emplace(options[i].displayed, i);
    }
    const auto find = [&](const std::string& text) -> std::optional<std::size_t> {
        for (const auto* places : {&exported, &displayed})
            if (const auto found = places->find(text); found != places->end())
                return found->second;
        return {};
    };
    Choices choices;
    for (const std::string& text : texts) {
        if (const auto index = find(text))
            choices.indices.insert(*index);
        else if (kind == FieldKind::ComboBox && (flags & Field::Edit))
            choices.ownText = text;
        else if (!text.empty())
            return wrongValue("the field has no choice " + quoted(text));
    }
    if (texts.size() > 1 && (choices.ownText || (choices.indices.size() > 1 && !(flags & Field::MultiSelect))))
        return wrongValue("the field takes only one choice");
    return choices;
}

// The value for the choices: a string, an array of several, or null for none.
Ref<Value> valueOf(const std::vector<FieldOption>& options, const Choices& choices)
{
    if (choices.ownText)
        return stringOf(*choices.ownText);
    std::vector<Ref<Value>> strings;
    for (const std::size_t index : choices.indices)
        strings.push_back(stringOf(options[index].exported));
    if (strings.size() > 1)
        return Array::create(strings);
    return strings.empty() ? nullptr : strings[0];
}

Ref<Value> numberOf(std::size_t index)
{
    return make<NumberObj>(static_cast<std::int64_t>(index), 0);
}

Ref<Value> indicesOf(const Choices& choices)
{
    std::vector<Ref<Value>> numbers;
    std::transform(choices.indices.begin(), choices.indices.end(), std::back_inserter(numbers), numberOf);
    return numbers.empty() ? Ref<Value>() : Ref<Value>(Array::create(numbers));
}

// What is seen of the choices.
void show(FieldUpdate& update, const std::vector<FieldOption>& options, FieldKind kind, const Choices& choices)
{
    if (kind == FieldKind::ListBox)
        for (std::size_t i = 0; i < options.size(); ++i)
            update.choices.push_back({options[i].displayed, choices.indices.contains(i)});
    else if (choices.ownText)
        update.text = *choices.ownText;
    else if (!choices.indices.empty())
        update.text = options[*choices.indices.begin()].displayed;
}

Result<FieldUpdate> updateForChoice(
    const Document& document, const FieldNode& field, FieldKind kind, const FieldValue& value, Budget& budget)
{
    if (std::holds_alternative<bool>(value))
        return doesNotTake(kind, "on or off");
    const auto* text = std::get_if<std::string>(&value);
    const auto texts = text ? FieldTexts{*text} : std::get<FieldTexts>(value);
    const std::vector<FieldOption> options = optionsOf(document, field.entries, budget);
    // What is chosen may be the document's own, and each text is looked for among all options.
    if (budget.isExceeded() || !budget.spend(Cost::Steps, (texts.size() - std::min<std::size_t>(texts.size(), 1))
            * options.size()))
        return budget.refusal();
    const Result<Choices> choices = choose(field, options, kind, texts);
    if (!choices)
        return choices.refusal();
    Ref<Value> chosen = valueOf(options, *choices);
    if (choices->ownText && !chosen)
        return noUtf8();
    // What a field above has would show through.
    if (!chosen && field.isBelowValue)
        chosen = Array::create({});
    FieldUpdate update;
    show(update, options, kind, *choices);
    update.isEmpty = choices->ownText.value_or("").empty() && choices->indices.empty();
    const bool isMultiple = flagsOf(field.entries) & Field::MultiSelect;
    for (const Ref<Dictionary>& carrier : carriersOf(field)) {
        update.changes.push_back({carrier, FormKeys::value, chosen});
        if (isMultiple || carrier->find(FormKeys::selectedIndices))
            update.changes.push_back({carrier, FormKeys::selectedIndices, indicesOf(*choices)});
        if (kind == FieldKind::ListBox && carrier->find(topIndex))
            update.changes.push_back(
                {carrier, topIndex, numberOf(choices->indices.empty() ? 0 : *choices->indices.begin())});
    }
    return update;
}

} // namespace

Result<FieldUpdate> updateFor(
    const Document& document, const FieldNode& field, const FieldValue& value, bool isDrawn, Budget& budget) noexcept
{
    const FieldKind kind = kindOf(field.entries);
    switch (kind) {
    case FieldKind::Text:
        return updateForText(field, value);
    case FieldKind::CheckBox:
    case FieldKind::RadioButtons:
        return updateForButton(document, field, kind, value, isDrawn, budget);
    case FieldKind::ListBox:
    case FieldKind::ComboBox:
        return updateForChoice(document, field, kind, value, budget);
    case FieldKind::PushButton:
    case FieldKind::Signature:
    case FieldKind::Unknown:
        break;
    }
    return wrongValue("a field of the kind " + std::string(kindLabel(kind)) + " can't be filled");
}

std::optional<FieldUpdate> presentUpdate(const Document& document, const FieldNode& field, Budget& budget) noexcept
{
    FieldTexts texts;
    const auto add = [&](const Ref<Value>& value) {
        if (const auto string = resolveAs<PDF::String>(document, value))
            texts.push_back(textWithin(budget, *string));
    };
    const Ref<Array> array = field.entries.as<Array>(Inherited::Value);
    for (std::uint64_t i = 0; array && i < array->size() && budget.spend(Cost::Steps, 1); ++i)
        add(array->get(i));
    if (!array)
        add(field.entries[Inherited::Value]);
    const FieldKind kind = kindOf(field.entries);
    const bool isText = kind == FieldKind::Text;
    if (!isText && kind != FieldKind::ComboBox && kind != FieldKind::ListBox)
        return {};
    const std::string first = texts.empty() ? "" : texts.front();
    const auto update = updateFor(document, field, isText ? FieldValue(first) : FieldValue(texts), false, budget);
    FieldUpdate result;
    if (update)
        result = *update;
    else
        result.text = first;
    return result;
}

} // namespace Host
