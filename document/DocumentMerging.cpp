#include <document/PageComposition.h>

#include <document/Keys.h>
#include <document/Lookup.h>
#include <document/Report.h>
#include <values/ArrayObj.h>
#include <values/DictionaryObj.h>
#include <values/ObjectRef.h>

// Merging resources. Their categories are not known by name: each is a dictionary or an array, itself or by
// one reference, and treated as such.

namespace Libraries::Files::PDF {

bool DocumentObj::Merging::readResources(
    const Dictionary& dictionary, const Document& document, Ref<Dictionary>& resources) noexcept
{
    Ref<Value> value;
    if (!findEntry(dictionary, Keys::resources, value))
        return report.fail(ErrBadObject, "Failed to retrieve resources of dictionary");
    if (!value)
        return true;
    if (value->type() == Value::Type::Dictionary) {
        resources = value.cast<Dictionary>();
        return resources || report.fail(ErrBadObject, "Failed to cast dictionary to Dictionary");
    }
    if (value->type() != Value::Type::ObjectRef)
        return report.fail(ErrBadObject, "Invalid type for page resource: ", value->type());
    const Ref<PDF::Object> object = document.object(value.cast<ObjectRef>());
    if (!object)
        return report.fail(ErrBadObject, "Failed to retrieve resource object");
    resources = object->valueAsDictionary();
    return resources || report.fail(ErrBadObject, "Failed to retrieve resource object dictionary");
}

// The messages of the two sides of a merge.
struct DocumentObj::Merging::Wording {
    const char* noKeys;
    const char* noKey;
    const char* noCategory;
    const char* noDictionary; // the object follows
    const char* noArray;      // the object follows
    const char* wrongObject;  // between the object and its type
    const char* wrongValue;
    bool isCategoryNamed; // in the line for a wrong value
    const char* noNames;
    const char* noName; // between the index of a name and the category
};

const DocumentObj::Merging::Wording DocumentObj::Merging::targetWording{
    .noKeys = "Failed to retrieve keys of original resources",
    .noKey = "Key or original resource is NULL: ",
    .noCategory = "Key not available in original resources: ",
    .noDictionary = "Failed to retrieve object dictionary of ",
    .noArray = "Failed to retrieve object array of ",
    .wrongObject = " has invalid type ",
    .wrongValue = "Invalid type of resource entry ",
    .isCategoryNamed = true,
    .noNames = "Failed to retrieve keys of resource dictionary ",
    .noName = " of resoure ",
};

const DocumentObj::Merging::Wording DocumentObj::Merging::toAddWording{
    .noKeys = "Failed to retrieve keys of resources to add",
    .noKey = "Key of resources to add is NULL: ",
    .noCategory = "Key not available in resources to add: ",
    .noDictionary = "Failed to retrieve dictionary of object ",
    .noArray = "Failed to retrieve array of object ",
    .wrongObject = " of resources to add has invalid type for resource: ",
    .wrongValue = "Type not valid for Resources",
    .isCategoryNamed = false,
    .noNames = "Failed to retrieve resource keys of resource to add ",
    .noName = " of resource to add ",
};

bool DocumentObj::Merging::merge(const Dictionary& toAdd, Dictionary& target) noexcept
{
    return indexTarget(target)
        && forEachCategory(toAdd, _cloning.source(), toAddWording,
            [&](const Category& category) { return addCategory(category, target); });
}

// Calls `visit` with each category of the resources, whose references belong to `document`, until it
// answers false.
template <class Visitor>
bool DocumentObj::Merging::forEachCategory(
    const Dictionary& resources, const Document& document, const Wording& wording, Visitor visit) noexcept
{
    const Ref<TVector<Ref<::String>>> keys = resources.keys();
    if (!keys)
        return report.line(wording.noKeys);
    for (std::size_t i = 0; i < keys->size(); ++i) {
        Category category;
        category.name = keys->get(i);
        if (!category.name)
            return report.line(wording.noKey, i);
        const Ref<Value> value = resources.find(category.name);
        if (!value)
            return report.line(wording.noCategory, category.name);
        if (!readCategory(value, document, wording, category) || !visit(category))
            return false;
    }
    return true;
}

// Fills in the dictionary or the array of a category.
bool DocumentObj::Merging::readCategory(
    const Ref<Value>& value, const Document& document, const Wording& wording, Category& category) noexcept
{
    switch (value->type()) {
    case Value::Type::Dictionary:
        category.dictionary = value.cast<Dictionary>();
        return category.dictionary || report.line("Failed to cast dictionary to Dictionary");
    case Value::Type::Array:
        category.array = value.cast<Array>();
        return category.array || report.line("Failed to cast array to Array");
    case Value::Type::ObjectRef:
        return resolveCategory(value, document, wording, category);
    default:
        return report.line(wording.wrongValue, wording.isCategoryNamed ? category.name : nullptr, ": ", value->type());
    }
}

bool DocumentObj::Merging::resolveCategory(
    const Ref<Value>& value, const Document& document, const Wording& wording, Category& category) noexcept
{
    const Ref<ObjectRef> reference = value.cast<ObjectRef>();
    if (!reference)
        return report.line("Failed to cast object reference to ObjectRef");
    const Ref<PDF::Object> object = document.object(reference);
    if (!object)
        return report.line("Failed to resolve object reference ", reference->asText());
    switch (const Value::Type type = object->valueType()) {
    case Value::Type::Dictionary:
        category.dictionary = object->valueAsDictionary();
        return category.dictionary || report.line(wording.noDictionary, object->asText());
    case Value::Type::Array:
        category.array = object->valueAsArray();
        return category.array || report.line(wording.noArray, object->asText());
    default:
        return report.line("Object ", object->asText(), wording.wrongObject, type);
    }
}

// Calls `visit` with each name of a dictionary category until it answers false.
template <class Visitor>
bool DocumentObj::Merging::forEachName(const Category& category, const Wording& wording, Visitor visit) noexcept
{
    const Ref<TVector<Ref<::String>>> names = category.dictionary->keys();
    if (!names)
        return report.line(wording.noNames, category.name);
    for (std::size_t i = 0; i < names->size(); ++i) {
        const Ref<::String> name = names->get(i);
        if (!name)
            return report.line("Failed to retrieve resource key ", i, wording.noName, category.name);
        if (!visit(name))
            return false;
    }
    return true;
}

// Deliberate: the names of all categories are one set, so that a font named like an image of the target
// is refused; and names that are merged don't join it, so that two categories may bring the same one.
bool DocumentObj::Merging::indexTarget(const Dictionary& target) noexcept
{
    _targetCategories.clear();
    _targetNames.clear();
    const auto addName = [this](const Ref<::String>& name) {
        _targetNames.insert(name);
        return true;
    };
    return forEachCategory(target, _document, targetWording, [&](const Category& category) {
        if (category.dictionary && !forEachName(category, targetWording, addName))
            return false;
        _targetCategories.emplace(category.name, category);
        return true;
    });
}

// The target's category of that name, made as a direct value when there is none. Null with a line.
const DocumentObj::Merging::Category* DocumentObj::Merging::targetOf(
    const Category& toAdd, Dictionary& target) noexcept
{
    const auto found = _targetCategories.find(toAdd.name);
    if (found != _targetCategories.end())
        return &found->second;
    Category added;
    added.name = toAdd.name;
    Ref<Value> value;
    if (toAdd.dictionary)
        value = added.dictionary = make<DictionaryObj>();
    else
        value = added.array = make<ArrayObj>(ArrayObj::Elements());
    if (!target.set(toAdd.name, std::move(value))) {
        const char* kind = toAdd.dictionary ? "dictionary" : "array";
        report.line("Failed to add resource ", kind, " for ", toAdd.name);
        return nullptr;
    }
    return &_targetCategories.emplace(toAdd.name, std::move(added)).first->second;
}

bool DocumentObj::Merging::addCategory(const Category& toAdd, Dictionary& target) noexcept
{
    const Category* original = targetOf(toAdd, target);
    if (!original)
        return false;
    if (original->dictionary && toAdd.dictionary)
        return forEachName(toAdd, toAddWording,
            [&](const Ref<::String>& name) { return addName(name, toAdd, *original->dictionary); });
    if (original->array && toAdd.array)
        return mergeArrays(toAdd, *original->array);
    // Deliberate: both lines say the reverse of the facts; callers know them so.
    if (original->dictionary)
        return report.line("Original resource expects an Array, but resource to add provides a Dictionary for ",
            toAdd.name);
    return report.line("Original resource expects a Dictionary, but resource to add provides an Array for ",
        toAdd.name);
}

bool DocumentObj::Merging::addName(
    const Ref<::String>& name, const Category& toAdd, Dictionary& target) noexcept
{
    Ref<Value> value = toAdd.dictionary->find(name);
    if (!value)
        return report.line("Failed to retrieve value of ", name, " of resource to add ", toAdd.name);
    if (_targetNames.contains(name)) {
        // Deliberate: references of the two documents are equal when their numbers are, whatever they
        // lead to; the target's object then takes the place of the other one.
        const Ref<Value> original = target.find(name);
        if (!original || !original->equal(std::move(value)))
            return report.line("A resource already exists with name ", name);
        report.information("Resource is equal, reusing: ", name);
        return true;
    }
    Ref<Value> clone = _cloning.cloneValue(std::move(value));
    if (!clone)
        return report.line("Failed to clone value of ", name, " of resource to add ", toAdd.name);
    if (!target.set(name, std::move(clone)))
        return report.line("Failed to add cloned value of ", name, " of resource to add ", toAdd.name);
    return true;
}

// Deliberate: it is the array to add that grows by what it lacks, while the target's stays as it is, and
// the lines call each by the other's name. The two may be one array: what it grows by is not looked at.
bool DocumentObj::Merging::mergeArrays(const Category& toAdd, const Array& target) noexcept
{
    const std::uint64_t count = target.size();
    for (std::uint64_t i = 0; i < count; ++i) {
        const Ref<Value> element = target.get(i);
        if (!element)
            return report.line("Array value ", i, " is invalid of resource to add: ", toAdd.name);
        bool isFound = false;
        for (std::uint64_t k = 0; k < toAdd.array->size() && !isFound; ++k) {
            const Ref<Value> present = toAdd.array->get(k);
            if (!present)
                return report.line("Array value ", k, " is invalid of original resource ", toAdd.name);
            isFound = present->equal(element);
        }
        if (isFound)
            continue;
        Ref<Value> clone = _cloning.cloneValue(element);
        if (!clone)
            return report.line("Failed to clone array value ", i, " of resource to add: ", toAdd.name);
        toAdd.array->append(std::move(clone));
    }
    return true;
}

} // namespace Libraries::Files::PDF
