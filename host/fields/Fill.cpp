#include <host/fields/Fill.h>

#include <document/Resolve.h>
#include <host/base/ErrorWords.h>
#include <host/fields/FieldDrawing.h>
#include <host/fields/FieldReading.h>
#include <host/fields/FillWarnings.h>
#include <host/fields/RequiredFields.h>
#include <host/fields/ViewerRequest.h>
#include <platform/ConstantText.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText otherForm{"XFA"};

} // namespace

struct FormFiller::State {
    State(const Ref<Document>& of, FieldTree fields, std::uint64_t documentSize)
        : document(of), tree(std::move(fields)), size(documentSize), warnings(*document, tree),
          drawer(document, tree.form()), viewers(document, tree), required(tree)
    {
    }

    const Ref<Document> document;
    const FieldTree tree;
    const std::uint64_t size; // of the document, by which each filling has its budget
    FillWarnings warnings;
    FieldDrawer drawer;
    ViewerRequest viewers;
    RequiredFields required;

    // What people should know of fields that were filled.
    void noteFilled(const std::vector<std::size_t>& fields, const std::vector<FieldUpdate>& updates,
        const std::vector<FieldDrawing>& drawings, const FillOptions& options)
    {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (!updates[i].warning.empty())
                warnings.add({tree.fields()[fields[i]].path + ": " + updates[i].warning});
            warnings.addScripts(*document, tree, fields[i]);
            required.noteFilled(fields[i], updates[i].isEmpty);
        }
        for (const FieldDrawing& drawing : drawings)
            warnings.add(drawing.warnings);
        if (options.areRequiredChecked)
            warnings.set(FillWarnings::Changing::Required, required.warning());
        const bool isShaped = std::any_of(
            drawings.begin(), drawings.end(), [](const FieldDrawing& drawing) { return drawing.isShaped(); });
        if (options.appearances == Appearances::DrawnByViewers)
            viewers.make();
        else if (!drawings.empty())
            warnings.set(FillWarnings::Changing::Viewers, viewers.noteDrawn(fields, isShaped));
    }
    // Takes the other form out, which would show the old values.
    void removeOtherForm(bool isKept)
    {
        if (!resolvePresent(*document, tree.form()->find(otherForm)))
            return;
        if (!isKept)
            tree.form()->set(otherForm, nullptr);
        warnings.add({isKept ? "the document also has an XFA form, which keeps the old values"
                             : "the document's XFA form is taken out, since it would show the old values"});
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
    return FormFiller(std::make_unique<State>(document, std::move(*tree), size));
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
        return Refusal{Reason::Missing, _state->tree.form() ? "there is no such field" : "the document has no form"};
    const bool isDrawn = options.appearances == Appearances::Drawn;
    Budget budget(_state->size, options.limitFactor);
    std::vector<FieldUpdate> updates;
    std::vector<FieldDrawing> drawings;
    for (const std::size_t index : found) {
        const FieldNode& field = _state->tree.fields()[index];
        Result<FieldUpdate> update = updateFor(*_state->document, field, value, isDrawn, budget);
        if (!update)
            return update.refusal();
        updates.push_back(std::move(*update));
        if (!isDrawn)
            continue;
        auto drawing = _state->drawer.draw(
            field, updates.back(), {options.engine, options.isAnyTextAllowed, options.areFontsLater}, budget);
        if (!drawing)
            return drawing.refusal();
        drawings.push_back(std::move(*drawing));
    }
    Edit edit(_state->document);
    for (FieldDrawing& drawing : drawings)
        if (auto refusal = _state->drawer.commit(drawing, edit))
            return refusal;
    for (FieldUpdate& update : updates)
        for (Change& change : update.changes)
            edit.set(change.dictionary, change.key, std::move(change.value));
    if (!edit.apply())
        return codeRefusal(Error::get());
    _state->removeOtherForm(options.isXfaKept);
    _state->noteFilled(found, updates, drawings, options);
    return {};
}

std::optional<Refusal> FormFiller::finish() noexcept
{
    Edit edit(_state->document);
    if (auto refusal = _state->drawer.finish(edit))
        return refusal;
    return edit.apply() ? std::nullopt : std::optional(codeRefusal(Error::get()));
}

const std::vector<std::string>& FormFiller::warnings() const noexcept
{
    return _state->warnings.lines();
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
