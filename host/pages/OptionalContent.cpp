#include <host/pages/OptionalContent.h>

#include <host/base/Following.h>
#include <host/pages/PageKeys.h>
#include <values/Array.h>
#include <values/Object.h>
#include <values/ObjectRef.h>

#include <unordered_map>
#include <unordered_set>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText propertiesKey{"OCProperties"};
constinit const ConstantText configurationKey{"D"};
constinit const ConstantText groupsKey{"OCGs"};
constinit const ConstantText baseStateKey{"BaseState"};
constinit const ConstantText onKey{"ON"};
constinit const ConstantText offKey{"OFF"};
constinit const ConstantText orderKey{"Order"};
constinit const ConstantText automaticKey{"AS"};

using Values = std::vector<Ref<Value>>;

Values elementsOf(const Document& document, const Dictionary& dictionary, const Ref<::String>& key)
{
    Values elements;
    const auto array = followEntryAs<Array>(document, dictionary, key);
    for (std::uint64_t i = 0; array && i < array->size(); ++i)
        elements.push_back(array->get(i));
    return elements;
}

// What a document says of its groups.
class Configuration {
public:
    explicit Configuration(const Document& document) : _document(document)
    {
        const auto catalog = followEntryAs<Dictionary>(document, *document.trailer(), PageKeys::root);
        const auto properties = catalog ? followEntryAs<Dictionary>(document, *catalog, propertiesKey) : nullptr;
        entries = properties ? followEntryAs<Dictionary>(document, *properties, configurationKey) : nullptr;
        isOffByDefault = entries && isNamed(followEntry(document, *entries, baseStateKey), "OFF");
        if (entries)
            for (const Ref<Value>& each : elementsOf(document, *entries, isOffByDefault ? onKey : offKey))
                _exceptions.insert(objectOf(each));
    }

    // The indirect object of a group; null for any other value.
    const PDF::Object* objectOf(const Ref<Value>& value) const
    {
        const Ref<ObjectRef> reference = valueAs<ObjectRef>(value);
        return reference ? _document.object(reference).get() : nullptr;
    }
    bool isHidden(const PDF::Object& group) const { return _exceptions.contains(&group) != isOffByDefault; }

    Ref<Dictionary> entries; // null when there is none
    bool isOffByDefault = false;

private:
    const Document& _document;
    std::unordered_set<const PDF::Object*> _exceptions;
};

// The groups that came along, with the references to their copies.
using Groups = std::unordered_map<const PDF::Object*, Ref<Value>>;

// Entries of AS, each for those of its groups that came along.
Values automaticStates(const Document& source, const Configuration& from, const Groups& groups, ValueCopying& copying)
{
    Values states;
    for (const Ref<Value>& each : elementsOf(source, *from.entries, automaticKey)) {
        const auto state = followAs<Dictionary>(source, each);
        Values kept;
        for (const Ref<Value>& group : state ? elementsOf(source, *state, groupsKey) : Values())
            if (const auto found = groups.find(from.objectOf(group)); found != groups.end())
                kept.push_back(found->second);
        if (kept.empty())
            continue;
        const Ref<Dictionary> copy = Dictionary::create();
        copy->set(groupsKey, Array::create(kept));
        for (const char* key : {"Event", "Category"})
            if (const Ref<Value> value = followEntry(source, *state, ::String::create(key)))
                copy->set(::String::create(key), copying.copy(value));
        states.push_back(copy);
    }
    return states;
}

// The dictionary under a key, which becomes a new one where there is none.
Ref<Dictionary> dictionaryUnder(Edit& edit, const Ref<Dictionary>& parent, const Ref<::String>& key)
{
    Ref<Dictionary> held = followEntryAs<Dictionary>(*edit.document(), *parent, key);
    if (!held) {
        held = Dictionary::create();
        edit.set(parent, key, held);
    }
    return held;
}

void append(Edit& edit, const Ref<Dictionary>& dictionary, const Ref<::String>& key, const Values& more)
{
    if (more.empty())
        return;
    Values elements = elementsOf(*edit.document(), *dictionary, key);
    elements.insert(elements.end(), more.begin(), more.end());
    edit.set(dictionary, key, Array::create(elements));
}

} // namespace

void addOptionalContent(Edit& edit, const Document& source, ValueCopying& copying) noexcept
{
    const Configuration from(source);
    const Configuration to(*edit.document());
    Groups groups;
    Values all;
    Values exceptions;
    for (const auto& [object, reference] : copying.copied()) {
        const Ref<Dictionary> group = valueAs<Dictionary>(object->value());
        if (!group || !isNamed(group->find(PageKeys::type), "OCG"))
            continue;
        groups.emplace(object.get(), reference);
        all.push_back(reference);
        if (from.isHidden(*object) != to.isOffByDefault)
            exceptions.push_back(reference);
    }
    const auto catalog = followEntryAs<Dictionary>(*edit.document(), *edit.document()->trailer(), PageKeys::root);
    if (all.empty() || !catalog)
        return;
    const Ref<Dictionary> properties = dictionaryUnder(edit, catalog, propertiesKey);
    const Ref<Dictionary> configuration = dictionaryUnder(edit, properties, configurationKey);
    append(edit, properties, groupsKey, all);
    append(edit, configuration, to.isOffByDefault ? onKey : offKey, exceptions);
    append(edit, configuration, orderKey, all);
    if (from.entries)
        append(edit, configuration, automaticKey, automaticStates(source, from, groups, copying));
}

} // namespace Host
