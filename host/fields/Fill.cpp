#include <host/fields/Fill.h>

#include <document/Resolve.h>
#include <forms/FormKeys.h>
#include <host/fields/FieldDrawing.h>
#include <host/fields/FieldReading.h>
#include <host/fields/TextString.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/BooleanObj.h>

#include <algorithm>
#include <utility>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

const Ref<::String> otherForm = ::String::create("XFA");

std::vector<std::string> warningsFor(const Document& document, const FieldTree& tree)
{
    std::vector<std::string> warnings;
    const auto& fields = tree.fields();
    if (std::any_of(fields.begin(), fields.end(), [](const FieldNode& field) { return isSigned(field.entries); }))
        warnings.push_back("the document is signed, and the signature will no longer be valid");
    if (tree.form() && resolvePresent(document, tree.form()->find(otherForm)))
        warnings.push_back("the document also has an XFA form, which keeps the old values");
    return warnings;
}

bool isTrue(const Document& document, const Dictionary& form)
{
    const auto flag = resolveEntryAs<Boolean>(document, form, FormKeys::needAppearances);
    return flag && flag->value();
}

// What a field with a text or choices comes to as it is; absent for any other.
std::optional<FieldUpdate> presentUpdate(const Document& document, const FieldNode& field, Budget& budget)
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

} // namespace

struct FormFiller::State {
    Ref<Document> document;
    FieldTree tree;
    std::uint64_t size; // of the document, by which each filling has its budget
    std::vector<std::string> warnings;
    FieldDrawer drawer;

    bool areAllDrawn = false; // that had no looks

    // Looks for all fields that have none, and viewers don't draw any.
    void keepLooks(const FillOptions& options, Budget& budget)
    {
        if (std::exchange(areAllDrawn, true) || !isTrue(*document, *tree.form()))
            return;
        for (const FieldNode& field : tree.fields())
            if (const auto update = presentUpdate(*document, field, budget))
                if (auto drawing
                    = drawer.draw(field, *update, {options.engine, true, options.areFontsLater, true}, budget))
                    drawer.commit(*drawing);
        tree.form()->set(FormKeys::needAppearances, nullptr);
        warn({"viewers aren't asked to draw all fields (NeedAppearances), since they would lose characters"});
    }
    // One after the other, so that a page of warnings of one kind is one.
    void warn(std::vector<std::string> more)
    {
        for (std::string& warning : more)
            if (warnings.size() < Limits::maxSkipped
                && std::find(warnings.begin(), warnings.end(), warning) == warnings.end())
                warnings.push_back(std::move(warning));
    }
};

FormFiller::FormFiller(std::unique_ptr<State> state) noexcept : _state(std::move(state)) {}
FormFiller::FormFiller(FormFiller&& other) noexcept = default;
FormFiller& FormFiller::operator=(FormFiller&& other) noexcept = default;
FormFiller::~FormFiller() noexcept = default;

Result<FormFiller> FormFiller::create(const Ref<Document>& document, std::uint64_t limitFactor) noexcept
{
    const std::uint64_t size = sizeOf(document);
    Budget budget(size, limitFactor);
    Result<FieldTree> tree = FieldTree::build(document, budget);
    if (!tree)
        return tree.refusal();
    std::vector<std::string> warnings = warningsFor(*document, *tree);
    const Ref<Dictionary> form = tree->form();
    return FormFiller(std::make_unique<State>(
        State{document, std::move(*tree), size, std::move(warnings), FieldDrawer(document, form)}));
}

bool FormFiller::takesValue(const std::string& path) const noexcept
{
    const std::vector<std::size_t>& found = _state->tree.find(path);
    return !found.empty() && std::all_of(found.begin(), found.end(), [this](std::size_t index) {
        return isFillable(kindOf(_state->tree.fields()[index].entries));
    });
}

std::optional<Refusal> FormFiller::fill(
    const std::string& path, const FieldValue& value, const FillOptions& options) noexcept
{
    const std::vector<std::size_t>& found = _state->tree.find(path);
    if (found.empty())
        return Refusal{Reason::Missing, "there is no such field"};
    const bool isDrawn = options.appearances == Appearances::Drawn;
    Budget budget(_state->size, options.limitFactor);
    Changes all;
    std::vector<FieldDrawing> drawings;
    for (const std::size_t index : found) {
        const FieldNode& field = _state->tree.fields()[index];
        Result<FieldUpdate> update = updateFor(*_state->document, field, value, isDrawn, budget);
        if (!update)
            return update.refusal();
        all.insert(all.end(), update->changes.begin(), update->changes.end());
        if (!isDrawn)
            continue;
        auto drawing = _state->drawer.draw(
            field, *update, {options.engine, options.isAnyTextAllowed, options.areFontsLater}, budget);
        if (!drawing)
            return drawing.refusal();
        drawings.push_back(std::move(*drawing));
    }
    const Ref<Dictionary>& form = _state->tree.form();
    if (options.appearances == Appearances::DrawnByViewers && !isTrue(*_state->document, *form))
        all.push_back({form, FormKeys::needAppearances, make<BooleanObj>(true)});
    for (FieldDrawing& drawing : drawings) {
        if (auto refusal = _state->drawer.commit(drawing))
            return refusal;
        _state->warn(std::move(drawing.warnings));
    }
    for (Change& change : all)
        change.dictionary->set(change.key, std::move(change.value));
    if (std::any_of(drawings.begin(), drawings.end(), [](const FieldDrawing& drawing) { return drawing.isShaped(); }))
        _state->keepLooks(options, budget);
    return {};
}

std::optional<Refusal> FormFiller::finish() noexcept
{
    return _state->drawer.finish();
}

const std::vector<std::string>& FormFiller::warnings() const noexcept
{
    return _state->warnings;
}

Result<std::vector<std::string>> fill(const Ref<Document>& document, const std::string& path,
    const FieldValue& value, const FillOptions& options) noexcept
{
    Result<FormFiller> filler = FormFiller::create(document, options.limitFactor);
    if (!filler)
        return filler.refusal();
    if (auto refusal = filler->fill(path, value, options))
        return *refusal;
    return filler->warnings();
}

} // namespace Host
