#include <host/fields/FieldTree.h>

#include <document/Keys.h>
#include <document/Resolve.h>
#include <forms/FormKeys.h>
#include <host/base/ErrorWords.h>
#include <host/fields/FieldReading.h>
#include <host/losses/PartialMarks.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/Object.h>
#include <values/String.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// Whether the dictionary has kids to be walked; otherwise it shows a field itself.
bool hasKids(const Document& document, const Dictionary& dictionary)
{
    const Ref<Array> kids = resolveEntryAs<Array>(document, dictionary, FormKeys::kids);
    return kids && kids->size() != 0;
}

} // namespace

// Where a list of dictionaries is: below `owner`, or at the top.
struct FieldTree::Place {
    FieldNode* owner;
    const FieldEntries& inherited;
    std::size_t level;
    Budget& budget;
};

Result<FieldTree> FieldTree::build(const Ref<Document>& document, Budget& budget) noexcept
{
    if (!document)
        return codeRefusal(ErrNullArgument);
    if (isEncrypted(*document->trailer()))
        return Refusal{Reason::Encrypted, "the document is encrypted, and so are the texts of its form (Encrypt)"};
    const Ref<PDF::Object> root = document->getCatalog();
    if (!root)
        return codeRefusal(Error::get(), "the document has no catalog: ");
    FieldTree tree(document);
    const Ref<Dictionary> catalog = root->valueAsDictionary();
    const Ref<Value> form = resolvePresent(*document, catalog->find(Keys::acroForm));
    if (!form)
        return tree;
    tree._form = valueAs<Dictionary>(form);
    if (!tree._form)
        return codeRefusal(ErrBadCast, "the form (AcroForm) is not a dictionary: ");
    FieldEntries defaults;
    for (const auto& [entry, key] : {std::pair(Inherited::DefaultAppearance, FormKeys::defaultAppearance.get()),
             std::pair(Inherited::Quadding, FormKeys::quadding.get())})
        defaults.set(entry, resolvePresent(*document, tree._form->find(key)));
    tree.walkList(tree._form->find(FormKeys::fields), {nullptr, defaults, 1, budget});
    if (budget.isExceeded())
        return budget.refusal().withPrefix("the form: ");
    return tree;
}

// Whether there is a field, with a name of its own, among the elements.
bool FieldTree::walkList(const Ref<Value>& list, const Place& place) noexcept
{
    const Ref<Array> array = resolveAs<Array>(*_document, list);
    bool hasField = false;
    for (std::uint64_t i = 0; array && i < array->size() && place.budget.spend(Cost::Steps, 1); ++i) {
        const Ref<Dictionary> dictionary = resolveAs<Dictionary>(*_document, array->get(i));
        if (!dictionary)
            skip(i, place, "doesn't lead to a dictionary");
        else if (place.level > Limits::maxFieldLevels)
            skip(i, place, "is more than " + std::to_string(Limits::maxFieldLevels) + " levels deep");
        else if (!_visited.insert(dictionary.get()).second)
            skip(i, place, "was listed before");
        else
            hasField |= walkElement(dictionary, i, place);
    }
    return hasField;
}

// Whether it is a field, or has one below.
bool FieldTree::walkElement(const Ref<Dictionary>& dictionary, std::uint64_t index, const Place& place) noexcept
{
    const Ref<PDF::String> title = resolveEntryAs<PDF::String>(*_document, *dictionary, FormKeys::name);
    std::string name = title ? textWithin(place.budget, *title) : std::string();
    if (name.empty() && place.owner)
        return walkWidget(dictionary, place);
    // A field at the top answers to its place when it has no name, as it does in the library.
    name = name.empty() ? std::to_string(index) : name;
    if (name.size() + (place.owner ? place.owner->path.size() + 1 : 0) > Limits::maxFieldPath)
        skip(index, place, "has a name that is too long");
    else if (place.budget.spend(Cost::Texts, name.size() + (place.owner ? 2 * place.owner->path.size() : 0)))
        walkField(dictionary, place.owner ? place.owner->path + "." + name : name, place);
    return true;
}

void FieldTree::walkField(const Ref<Dictionary>& dictionary, const std::string& path, const Place& place) noexcept
{
    FieldNode field{path, dictionary, place.inherited, {}, {}};
    field.isBelowValue = place.inherited[Inherited::Value] != nullptr;
    field.entries.override(*_document, *dictionary);
    const FieldEntries inherited = field.entries;
    bool isTerminal = true;
    if (hasKids(*_document, *dictionary))
        isTerminal = !walkList(dictionary->find(FormKeys::kids), {&field, inherited, place.level + 1, place.budget});
    else
        field.widgets.push_back(dictionary);
    if (isTerminal || !field.widgets.empty())
        add(std::move(field));
}

void FieldTree::add(FieldNode field) noexcept
{
    std::vector<std::size_t>& namesakes = _byPath[field.path];
    const auto same = std::find_if(namesakes.begin(), namesakes.end(),
        [&](std::size_t index) { return kindOf(_fields[index].entries) == kindOf(field.entries); });
    if (same == namesakes.end()) {
        namesakes.push_back(_fields.size());
        _fields.push_back(std::move(field));
        return;
    }
    FieldNode& first = _fields[*same];
    first.widgets.insert(first.widgets.end(), field.widgets.begin(), field.widgets.end());
    first.copies.push_back(std::move(field.dictionary));
    first.copies.insert(first.copies.end(), field.copies.begin(), field.copies.end());
    first.entries.complete(field.entries);
    first.isBelowValue |= field.isBelowValue;
}

const std::vector<std::size_t>& FieldTree::find(const std::string& path) const noexcept
{
    static const std::vector<std::size_t> none;
    const auto found = _byPath.find(path);
    return found == _byPath.end() ? none : found->second;
}

// A kid without a name shows the field above, and what it has itself counts for that field if that has none.
// Whether there is a field below.
bool FieldTree::walkWidget(const Ref<Dictionary>& dictionary, const Place& place) noexcept
{
    FieldEntries own;
    own.override(*_document, *dictionary);
    place.owner->entries.complete(own);
    if (dictionary->find(FormKeys::value))
        place.owner->copies.push_back(dictionary);
    if (hasKids(*_document, *dictionary))
        return walkList(dictionary->find(FormKeys::kids), {place.owner, place.inherited, place.level + 1, place.budget});
    place.owner->widgets.push_back(dictionary);
    return false;
}

void FieldTree::skip(std::uint64_t index, const Place& place, std::string_view why) noexcept
{
    if (_skipped.size() == Limits::maxSkipped)
        return;
    const std::string list = place.owner ? "Kids of " + place.owner->path : "Fields of the form";
    _skipped.push_back("element " + std::to_string(index) + " of " + list + " " + std::string(why));
}

} // namespace Host
