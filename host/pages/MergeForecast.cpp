#include <host/pages/MergeForecast.h>

#include <document/Keys.h>
#include <document/Resolve.h>
#include <host/base/ErrorWords.h>
#include <host/base/Keys.h>
#include <host/base/Utf8.h>
#include <values/Array.h>
#include <values/String.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constexpr std::uint64_t stepsOfName = 2; // it is looked at here, and again by the merge

bool holdsReference(const Ref<Value>& value)
{
    if (value->type() == Value::Type::ObjectRef)
        return true;
    if (const auto array = valueAs<Array>(value)) {
        for (std::uint64_t i = 0; i < array->size(); ++i)
            if (holdsReference(array->get(i)))
                return true;
    } else if (const auto dictionary = valueAs<Dictionary>(value)) {
        const auto keys = keysOf(*dictionary);
        return std::any_of(keys.begin(), keys.end(),
            [&dictionary](const Ref<::String>& key) { return holdsReference(dictionary->find(key)); });
    }
    return false;
}

// How much there is to be compared of a value: its parts, and long strings by their length.
std::uint64_t weightOf(const Ref<Value>& value)
{
    constexpr std::uint64_t charactersInAStep = 64;
    std::uint64_t weight = 1;
    if (const auto array = valueAs<Array>(value)) {
        for (std::uint64_t i = 0; i < array->size(); ++i)
            weight += weightOf(array->get(i));
    } else if (const auto dictionary = valueAs<Dictionary>(value)) {
        for (const Ref<::String>& key : keysOf(*dictionary))
            weight += weightOf(dictionary->find(key));
    } else if (const auto string = valueAs<PDF::String>(value)) {
        const Ref<::String> text = string->value();
        weight += (text ? text->length() : string->data() ? string->data()->size() : 0) / charactersInAStep;
    }
    return weight;
}

std::string labelOf(const Ref<::String>& category, const Ref<::String>& name)
{
    return toUtf8(category) + " " + toUtf8(name);
}

const char* labelOf(MergeForecast::Source source)
{
    return source == MergeForecast::Source::Foreign ? " of the other document" : " of the root of the page tree";
}

} // namespace

MergeForecast::MergeForecast(const Ref<Document>& document, const Ref<Document>& foreign, Budget& budget) noexcept
    : _document(document), _isForeignItself(document.get() == foreign.get()), _budget(budget),
      _contents(document, foreign, budget), _foreignCopies(foreign)
{
}

Result<std::shared_ptr<Resources>> MergeForecast::resourcesOf(
    const Document& document, const Dictionary& holder) noexcept
{
    if (const auto made = _resources.find(&holder); made != _resources.end())
        return made->second;
    const Ref<Value> entry = holder.find(Keys::resources);
    if (!entry)
        return std::shared_ptr<Resources>();
    const Ref<Dictionary> dictionary = resolveAs<Dictionary>(document, entry);
    if (!dictionary)
        return codeRefusal(ErrBadContents);
    std::shared_ptr<Resources>& resources = _resources[dictionary.get()];
    if (resources)
        return resources;
    const auto read = std::make_shared<Resources>();
    for (const Ref<::String>& key : keysOf(*dictionary)) {
        std::shared_ptr<Category> category = readCategory(document, dictionary->find(key));
        if (!category)
            return Refusal{Reason::BrokenRule, toUtf8(key) + " of the resources is neither a dictionary nor an array",
                ErrBadContents};
        read->emplace(key, std::move(category));
    }
    return resources = read;
}

Result<std::shared_ptr<Resources>> MergeForecast::madeResourcesOf(const Dictionary& holder) noexcept
{
    Result<std::shared_ptr<Resources>> found = resourcesOf(*_document, holder);
    if (found && !*found)
        *found = _resources[&holder] = std::make_shared<Resources>();
    return found;
}

// Null for a value that is not a category.
std::shared_ptr<Category> MergeForecast::readCategory(const Document& document, const Ref<Value>& value) noexcept
{
    const Ref<Value> content = resolve(document, value);
    const auto dictionary = valueAs<Dictionary>(content);
    const bool isArray = content && content->type() == Value::Type::Array;
    if (!dictionary && !isArray)
        return nullptr;
    std::shared_ptr<Category>& category = _categories[content.get()];
    if (category)
        return category;
    category = std::make_shared<Category>();
    category->isArray = isArray;
    if (const auto array = valueAs<Array>(content))
        for (std::uint64_t i = 0; i < array->size(); ++i)
            category->elements.push_back(array->get(i));
    else
        for (const Ref<::String>& name : keysOf(*dictionary))
            category->names.emplace(name, NamedValue{dictionary->find(name)});
    category->weight = weightOf(content);
    return category;
}

// A name that any category of the target has is in use, unless this one has it with an equal value. What is
// added claims no name, so that two categories may bring the same one.
std::optional<std::string> MergeForecast::merge(Source source, const Resources& toAdd, Resources& target) noexcept
{
    ++_mergeCount;
    _hasCopied = false;
    UsedNames used;
    std::optional<std::string> first;
    for (const auto& [key, category] : target)
        if (_budget.spend(Cost::Steps, 1 + stepsOfName * category->names.size()))
            for (const auto& [name, value] : category->names)
                used.emplace(name, key);
    for (const auto& [key, added] : toAdd) {
        if (!_budget.spend(Cost::Steps, added->weight))
            break;
        std::shared_ptr<Category>& category = target[key];
        if (!category)
            category = std::make_shared<Category>(Category{added->isArray, {}, {}});
        std::optional<std::string> collision;
        if (category->isArray != added->isArray)
            collision = toUtf8(key) + labelOf(source)
                + " can't be added: one of the two is an array and the other a dictionary";
        else if (added->isArray)
            mergeArrays(source, *added, *category);
        else
            collision = mergeNames(source, key, *added, used, *category);
        first = first ? first : collision;
    }
    return first;
}

// It is the array to add that grows by what it lacks. A copied reference is like none that is there.
void MergeForecast::mergeArrays(Source source, Category& toAdd, const Category& target) noexcept
{
    const std::size_t count = target.elements.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Ref<Value> element = target.elements[i];
        const std::uint64_t weight = weightOf(element);
        const auto isEqual = [&element](const Ref<Value>& present) { return present->equal(element); };
        if (!_budget.spend(Cost::Steps, weight * (1 + toAdd.elements.size())))
            return;
        const bool isCopy = isCopying(source) && holdsReference(element);
        if (!isCopy && std::any_of(toAdd.elements.begin(), toAdd.elements.end(), isEqual))
            continue;
        spendCopy(source, element);
        toAdd.elements.push_back(element);
        toAdd.weight += weight;
    }
}

// After the end of the budget nothing is counted any more.
void MergeForecast::spendCopy(Source source, const Ref<Value>& value) noexcept
{
    const std::uint64_t count = isCopying(source) ? _foreignCopies.of(value) : weightOf(value);
    (void)_budget.spend(Cost::Copies, count);
}

std::optional<std::string> MergeForecast::mergeNames(Source source, const Ref<::String>& key, const Category& toAdd,
    const UsedNames& used, Category& target) noexcept
{
    std::optional<std::string> first;
    const auto note = [&first](std::string collision) {
        if (!first)
            first = std::move(collision);
    };
    for (const auto& [name, value] : toAdd.names) {
        const auto holder = used.find(name);
        if (holder == used.end()) {
            spendCopy(source, value.value);
            _hasCopied = _hasCopied || (isCopying(source) && holdsReference(value.value));
            target.names.insert_or_assign(name, isCopying(source) ? NamedValue{value.value, _mergeCount} : value);
            continue;
        }
        const std::string refused = labelOf(key, name) + labelOf(source) + " can't be added: ";
        const auto present = target.names.find(name);
        if (present == target.names.end())
            note(refused + labelOf(holder->second, name) + " already has the name");
        else if (!isEqual(present->second, value, source))
            note(refused + "another " + labelOf(key, name)
                + (present->second.copiedBy ? " was added for a page that shares these resources"
                                            : " is already there"));
        else if (isCopying(source) && !leadToSame(present->second, value))
            note(labelOf(key, name) + " reads the same in both documents, but leads to different contents");
    }
    return first;
}

// What the merge finds, which compares references by their numbers. Those of a copy are new.
bool MergeForecast::isEqual(const NamedValue& present, const NamedValue& toAdd, Source source) const noexcept
{
    const bool areNumbersKnown = present.copiedBy == (isCopying(source) ? 0 : toAdd.copiedBy);
    return present.value->equal(toAdd.value) && (areNumbersKnown || !holdsReference(toAdd.value));
}

bool MergeForecast::leadToSame(const NamedValue& present, const NamedValue& foreign) noexcept
{
    if (_isForeignItself || present.copiedBy != 0)
        return present.value->equal(foreign.value);
    return _contents.areSame(present.value, foreign.value);
}

MergeForecast::Hidden MergeForecast::findHidden(const Resources& wanted, const Resources& seen) noexcept
{
    Hidden hidden;
    for (const auto& [key, category] : wanted) {
        if (!_budget.spend(Cost::Steps, category->weight))
            break;
        const auto found = seen.find(key);
        for (const auto& [name, value] : category->names) {
            const auto present = found == seen.end() ? category->names.end() : found->second->names.find(name);
            const bool isThere = found != seen.end() && present != found->second->names.end();
            if (!isThere && hidden.missing.empty())
                hidden.missing = labelOf(key, name);
            if (isThere && !leadToSame(present->second, value)) {
                hidden.wrong = labelOf(key, name);
                return hidden;
            }
        }
    }
    return hidden;
}

} // namespace Host
