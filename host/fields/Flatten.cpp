#include <host/fields/Flatten.h>

#include <document/Inspection.h>
#include <document/Keys.h>
#include <document/Resolve.h>
#include <forms/FormKeys.h>
#include <host/annotations/AnnotationLists.h>
#include <host/annotations/Appearance.h>
#include <host/annotations/StructurePlaces.h>
#include <host/base/ErrorWords.h>
#include <host/base/Following.h>
#include <host/fields/FieldDrawing.h>
#include <host/fields/FieldReading.h>
#include <host/fields/FieldRemoval.h>
#include <host/fields/TextString.h>
#include <host/pages/Drawing.h>
#include <host/pages/PageKeys.h>
#include <platform/ConstantText.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/Boolean.h>
#include <values/Name.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText optionalContentKey{"OC"};
constinit const ConstantText otherFormKey{"XFA"};
constinit const ConstantText off{"Off"};

bool isButton(FieldKind kind)
{
    return kind == FieldKind::CheckBox || kind == FieldKind::RadioButtons;
}

// Whether the value draws the fields of this kind.
bool isText(FieldKind kind)
{
    return kind == FieldKind::Text || kind == FieldKind::ComboBox || kind == FieldKind::ListBox;
}

// One call of `flatten`.
class Flattening {
public:
    Flattening(const Ref<Document>& document, FieldTree&& tree, PageTree&& pages, const FlattenOptions& options,
        Budget& budget)
        : _document(document), _options(options), _tree(std::move(tree)), _pages(std::move(pages)), _budget(budget),
          _edit(document), _drawing(_edit, _pages, options.limitFactor), _structure(_edit),
          _drawer(document, _tree.form())
    {
    }

    Result<FlattenResult> run(const FieldSelection& which)
    {
        auto refusal = choose(which);
        if (!refusal)
            refusal = takeOffWidgets();
        if (!refusal)
            refusal = drawMissing();
        if (refusal)
            return *refusal;
        drawPages();
        changeForm();
        if (auto failed = _drawing.prepare())
            return *failed;
        if (!_edit.apply())
            return codeRefusal(Error::get());
        warn(_drawing.warnings());
        return std::move(_result);
    }

private:
    // A widget on a page.
    struct Placement {
        std::size_t page;
        Ref<Dictionary> widget;
    };
    // What shows a widget; null where nothing does.
    struct Look {
        Ref<ObjectRef> xObject;
        Ref<Stream> stream; // that it shows
    };

    // Fields
    std::optional<Refusal> choose(const FieldSelection& which);
    std::optional<Refusal> choosePaths(const std::vector<std::string>& paths);
    void add(std::size_t field);
    const FieldNode* fieldOf(const Dictionary& widget) const;
    void changeForm();
    // Widgets
    std::optional<Refusal> takeOffWidgets();
    bool isSeen(const Dictionary& widget) const;
    bool isDrawnAnew(FieldKind kind) const;
    void findLook(const Ref<Dictionary>& widget);
    std::optional<Appearance> appearanceOf(const Dictionary& widget, const FieldNode* field) const;
    std::optional<Refusal> drawMissing();
    std::optional<Refusal> drawMissing(const FieldNode& field, std::vector<Ref<Dictionary>> widgets);
    bool isOn(const FieldNode& field, const Dictionary& widget) const;
    // Pages
    void setLook(const Dictionary& widget, const Appearance& appearance);
    Ref<ObjectRef> withOptionalContent(const Ref<ObjectRef>& xObject, const Stream& stream, const Ref<Value>& content);
    void drawPages();
    void warn(const std::vector<std::string>& warnings)
    {
        for (const std::string& warning : warnings)
            if (_result.warnings.size() < Limits::maxSkipped)
                _result.warnings.push_back(warning);
    }

    const Ref<Document> _document;
    const FlattenOptions& _options;
    const FieldTree _tree;
    const PageTree _pages;
    Budget& _budget;
    Edit _edit;
    Drawing _drawing;
    StructurePlaces _structure;
    FieldDrawer _drawer;
    bool _isAll = false;
    std::vector<bool> _isChosen; // by field
    std::unordered_map<const Dictionary*, std::size_t> _widgets; // with their fields
    std::unordered_set<const Dictionary*> _gone;                 // fields and widgets
    std::vector<Placement> _placements;
    std::unordered_map<const Dictionary*, Look> _looks;
    std::map<std::size_t, std::vector<Ref<Dictionary>>> _missing; // widgets to be drawn, by field
    FlattenResult _result;
};

// ---- Which fields

std::optional<Refusal> Flattening::choose(const FieldSelection& which)
{
    const auto& fields = _tree.fields();
    _isChosen.resize(fields.size());
    if (const auto* paths = std::get_if<std::vector<std::string>>(&which)) {
        if (auto refusal = choosePaths(*paths))
            return refusal;
    } else {
        _isAll = true;
        for (std::size_t i = 0; i < fields.size(); ++i)
            add(i);
    }
    if (std::any_of(fields.begin(), fields.end(), [](const FieldNode& field) { return isSigned(field.entries); }))
        warn({"the document is signed, and the signature will no longer be valid"});
    return {};
}

std::optional<Refusal> Flattening::choosePaths(const std::vector<std::string>& paths)
{
    std::vector<std::pair<std::string_view, std::size_t>> byPath;
    for (std::size_t i = 0; i < _tree.fields().size(); ++i)
        byPath.emplace_back(_tree.fields()[i].path, i);
    std::sort(byPath.begin(), byPath.end());
    const auto firstFrom = [&](const std::string& path) {
        return std::lower_bound(byPath.begin(), byPath.end(), std::pair(std::string_view(path), std::size_t(0)));
    };
    for (const std::string& path : paths) {
        std::size_t count = 0;
        // Those of this path, and those that begin with it and a point, after which the solidus comes.
        for (auto [place, end] : {std::pair(firstFrom(path), firstFrom(path + '\0')),
                 std::pair(firstFrom(path + "."), firstFrom(path + "/"))})
            for (; place != end; ++place, ++count)
                add(place->second);
        if (count == 0)
            return Refusal{Reason::Missing, path + ": there is no such field"};
    }
    return {};
}

void Flattening::add(std::size_t field)
{
    if (_isChosen[field])
        return;
    _isChosen[field] = true;
    ++_result.fieldCount;
    const FieldNode& node = _tree.fields()[field];
    _gone.insert(node.dictionary.get());
    for (const Ref<Dictionary>& copy : node.copies)
        _gone.insert(copy.get());
    for (const Ref<Dictionary>& widget : node.widgets) {
        _gone.insert(widget.get());
        _widgets.emplace(widget.get(), field);
    }
}

const FieldNode* Flattening::fieldOf(const Dictionary& widget) const
{
    const auto found = _widgets.find(&widget);
    return found != _widgets.end() ? &_tree.fields()[found->second] : nullptr;
}

void Flattening::changeForm()
{
    const Ref<Dictionary>& form = _tree.form();
    if (!form)
        return;
    if (_isAll || !removeFields(_edit, form, _gone)) {
        _edit.set(_document->getCatalog()->valueAsDictionary(), Keys::acroForm, nullptr);
    } else if (form->find(otherFormKey)) {
        _edit.set(form, otherFormKey, nullptr);
        warn({"the document also has an XFA form, which is taken out: it would show the fields as they were"});
    }
}

// ---- What shows them

std::optional<Refusal> Flattening::takeOffWidgets()
{
    AnnotationLists lists(_edit, [this](const Dictionary& annotation) {
        return _widgets.contains(&annotation)
            || (_isAll && isNamed(followEntry(*_document, annotation, PageKeys::subtype), "Widget"));
    });
    std::size_t repetitionsLeft = Limits::maxAnnotationCopies(objectsOf(_document).size());
    for (std::size_t i = 0; i < _pages.pages.size(); ++i) {
        if (_pages.pages[i].firstPlace != i)
            continue;
        for (const Ref<Dictionary>& widget : lists.takeOff(_pages.pages[i])) {
            _placements.push_back({i, widget});
            if (_looks.try_emplace(widget.get()).second)
                findLook(widget);
            else if (repetitionsLeft-- == 0)
                return Refusal{Reason::LimitReached, "widgets that are on several pages are too many", ErrOutOfRange};
        }
    }
    _result.widgetCount = _looks.size();
    return {};
}

bool Flattening::isSeen(const Dictionary& widget) const
{
    return _options.medium == Medium::Print ? isPrinted(*_document, widget) : isShownOnScreen(*_document, widget);
}

// Whether viewers don't show the appearances of such fields.
bool Flattening::isDrawnAnew(FieldKind kind) const
{
    const auto asked = isText(kind) && _tree.form()
        ? resolveEntryAs<Boolean>(*_document, *_tree.form(), FormKeys::needAppearances)
        : nullptr;
    return asked && asked->value();
}

void Flattening::findLook(const Ref<Dictionary>& widget)
{
    _gone.insert(widget.get());
    if (!isSeen(*widget))
        return;
    const FieldNode* field = fieldOf(*widget);
    const FieldKind kind = field ? kindOf(field->entries) : FieldKind::Unknown;
    const auto appearance = isDrawnAnew(kind) ? std::nullopt : appearanceOf(*widget, field);
    if (appearance)
        setLook(*widget, *appearance);
    else if (isText(kind) || (isButton(kind) && !normalAppearance(*_document, *widget)))
        _missing[_widgets.at(widget.get())].push_back(widget);
}

// In the state of `AS`. Without that the value of a button says it.
std::optional<Appearance> Flattening::appearanceOf(const Dictionary& widget, const FieldNode* field) const
{
    const Ref<Value> normal = normalAppearance(*_document, widget);
    const Ref<Name> state = resolveEntryAs<Name>(*_document, widget, FormKeys::appearanceState);
    if (state)
        return appearanceIn(*_document, normal, state->value());
    const Ref<Name> value = field ? field->entries.as<Name>(Inherited::Value) : nullptr;
    const auto appearance = appearanceIn(*_document, normal, value ? value->value() : nullptr);
    return appearance ? appearance : appearanceIn(*_document, normal, off);
}

std::optional<Refusal> Flattening::drawMissing()
{
    for (auto& [field, widgets] : _missing)
        if (auto refusal = drawMissing(_tree.fields()[field], std::move(widgets)))
            return refusal->withPrefix(_tree.fields()[field].path + ": ");
    return _drawer.finish(_edit);
}

std::optional<Refusal> Flattening::drawMissing(const FieldNode& field, std::vector<Ref<Dictionary>> widgets)
{
    FieldNode node{field.path, field.dictionary, field.entries, std::move(widgets), {}};
    FieldUpdate update = presentUpdate(*_document, node, _budget).value_or(FieldUpdate());
    if (_budget.isExceeded())
        return _budget.refusal();
    if (isButton(kindOf(node.entries)))
        update.drawnStates.assign(node.widgets.size(), "Yes");
    auto drawing = _drawer.draw(node, update, {_options.engine, _options.isAnyTextAllowed, true}, _budget);
    if (!drawing)
        return drawing.refusal();
    const auto isOffAndBare = [&](const WidgetDrawing& widget) {
        const bool isShown = widget.state.empty() ? !update.text.empty() || !update.choices.empty()
                                                  : isOn(field, *widget.widget);
        return !isShown && widget.look.borderColor.empty() && widget.look.background.empty();
    };
    std::erase_if(drawing->widgets, isOffAndBare);
    if (auto refusal = _drawer.commit(*drawing, _edit))
        return refusal;
    for (const WidgetDrawing& widget : drawing->widgets) {
        const bool isShowingState = widget.state.empty() || isOn(field, *widget.widget);
        const Ref<Value> shown = isShowingState ? widget.shown : widget.shownOff;
        setLook(*widget.widget, {shown, valueAs<Stream>(_edit.objects.resolve(shown))});
    }
    warn(drawing->warnings);
    return {};
}

// Of a button without an appearance. Where several widgets show the field, only the widget itself can say it.
bool Flattening::isOn(const FieldNode& field, const Dictionary& widget) const
{
    Ref<Name> state = resolveEntryAs<Name>(*_document, widget, FormKeys::appearanceState);
    if (!state && field.widgets.size() == 1)
        state = field.entries.as<Name>(Inherited::Value);
    return state && state->value() && !state->value()->equals("Off");
}

// ---- What is drawn

void Flattening::setLook(const Dictionary& widget, const Appearance& appearance)
{
    Look& look = _looks[&widget];
    look.stream = appearance.stream;
    look.xObject = valueAs<ObjectRef>(appearance.value);
    if (!look.xObject)
        look.xObject = _edit.objects.add(appearance.stream);
    const Ref<Dictionary> entries = appearance.stream->dict();
    // What only an annotation may leave out.
    if (!isNamed(followEntry(*_document, *entries, PageKeys::subtype), "Form"))
        _edit.set(entries, PageKeys::subtype, nameValue("Form"));
    if (followEntry(*_document, widget, optionalContentKey))
        look.xObject = withOptionalContent(look.xObject, *look.stream, widget.find(optionalContentKey));
}

// An XObject around it, since other widgets may show the same one.
Ref<ObjectRef> Flattening::withOptionalContent(
    const Ref<ObjectRef>& xObject, const Stream& stream, const Ref<Value>& content)
{
    const Rectangle box = appearanceBox(*_document, stream).value_or(Rectangle());
    const Ref<Dictionary> xObjects = Dictionary::create();
    xObjects->set(::String::create("Fx"), xObject);
    const Ref<Dictionary> resources = Dictionary::create();
    resources->set(PageKeys::xObject, xObjects);
    const Ref<Dictionary> entries = Dictionary::create();
    entries->set(PageKeys::type, nameValue("XObject"));
    entries->set(PageKeys::subtype, nameValue("Form"));
    entries->set(PageKeys::boundingBox, arrayOf({box.left, box.bottom, box.right, box.top}));
    entries->set(PageKeys::resources, resources);
    entries->set(optionalContentKey, content);
    constexpr std::string_view drawn = "/Fx Do\n";
    return _edit.objects.add(createStream(entries, {drawn.begin(), drawn.end()}));
}

void Flattening::drawPages()
{
    _structure.find(_gone);
    std::unordered_set<std::size_t> pages;
    std::unordered_set<const Dictionary*> drawn;
    for (const Placement& placement : _placements) {
        const Look& look = _looks[placement.widget.get()];
        const Page& page = _pages.pages[placement.page];
        const auto matrix = look.xObject ? appearanceMatrix(*_document, *placement.widget, *look.stream, page)
                                         : std::nullopt;
        if (!matrix)
            continue;
        _drawing.add(
            placement.page, look.xObject, *matrix, Layer::Above, _structure.give(*placement.widget, page));
        pages.insert(placement.page);
        drawn.insert(placement.widget.get());
    }
    _structure.finish();
    _result.pageCount = pages.size();
    _result.drawnCount = drawn.size();
}

} // namespace

Result<FlattenResult> flatten(
    const Ref<Document>& document, const FieldSelection& which, const FlattenOptions& options) noexcept
{
    Budget budget(document, options.limitFactor);
    auto tree = FieldTree::build(document, budget);
    if (!tree)
        return tree.refusal();
    auto found = pages(document, options.limitFactor);
    if (!found)
        return found.refusal();
    return Flattening(document, std::move(*tree), std::move(*found), options, budget).run(which);
}

} // namespace Host
