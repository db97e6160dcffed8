#include <host/pages/MergeForecast.h>

#include <document/Keys.h>
#include <document/Resolve.h>
#include <host/base/ErrorWords.h>
#include <host/base/Keys.h>
#include <host/base/Utf8.h>
#include <values/Array.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

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

std::string labelOf(const Ref<::String>& category, const Ref<::String>& name)
{
    return toUtf8(category) + " " + toUtf8(name);
}

const char* labelOf(MergeForecast::Source source)
{
    return source == MergeForecast::Source::Foreign ? " of the other document" : " of the root of the page tree";
}

} // namespace

MergeForecast::MergeForecast(const Ref<Document>& document, const Ref<Document>& foreign) noexcept
    : _document(document), _isForeignItself(document.get() == foreign.get()), _contents(document, foreign)
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
    if (isArray)
        return category;
    for (const Ref<::String>& name : keysOf(*dictionary))
        category->names.emplace(name, NamedValue{dictionary->find(name)});
    return category;
}

// A name that any category of the target has is in use, unless this one has it with an equal value. What is
// added claims no name, so that two categories may bring the same one.
std::optional<std::string> MergeForecast::merge(Source source, const Resources& toAdd, Resources& target) noexcept
{
    ++_mergeCount;
    _hasCopied = false;
    UsedNames used;
    for (const auto& [key, category] : target)
        for (const auto& [name, value] : category->names)
            used.emplace(name, key);
    for (const auto& [key, added] : toAdd) {
        std::shared_ptr<Category>& category = target[key];
        if (!category)
            category = std::make_shared<Category>(Category{added->isArray, {}});
        if (category->isArray != added->isArray)
            return toUtf8(key) + labelOf(source)
                + " can't be added: one of the two is an array and the other a dictionary";
        if (auto collision = mergeNames(source, key, *added, used, *category))
            return collision;
    }
    return {};
}

std::optional<std::string> MergeForecast::mergeNames(Source source, const Ref<::String>& key, const Category& toAdd,
    const UsedNames& used, Category& target) noexcept
{
    for (const auto& [name, value] : toAdd.names) {
        const auto holder = used.find(name);
        if (holder == used.end()) {
            _hasCopied = _hasCopied || (isCopying(source) && holdsReference(value.value));
            target.names.insert_or_assign(name, isCopying(source) ? NamedValue{value.value, _mergeCount} : value);
            continue;
        }
        const std::string refused = labelOf(key, name) + labelOf(source) + " can't be added: ";
        const auto present = target.names.find(name);
        if (present == target.names.end())
            return refused + labelOf(holder->second, name) + " already has the name";
        if (!isEqual(present->second, value, source))
            return refused + "another " + labelOf(key, name)
                + (present->second.copiedBy ? " was added for a page that shares these resources"
                                            : " is already there");
        if (isCopying(source) && !leadToSame(present->second, value))
            return labelOf(key, name) + " reads the same in both documents, but leads to different contents";
    }
    return {};
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
