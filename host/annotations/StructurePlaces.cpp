#include <host/annotations/StructurePlaces.h>

#include <host/base/Following.h>
#include <host/pages/Geometry.h>
#include <host/pages/PageKeys.h>
#include <platform/ConstantText.h>
#include <values/Array.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText contentNumberKey{"MCID"};
constinit const ConstantText kidsKey{"K"};
constinit const ConstantText limitsKey{"Limits"};
constinit const ConstantText nextKey{"ParentTreeNextKey"};
constinit const ConstantText numbersKey{"Nums"};
constinit const ConstantText objectKey{"Obj"};
constinit const ConstantText pageKey{"Pg"};
constinit const ConstantText parentKey{"StructParent"};
constinit const ConstantText parentsKey{"StructParents"};
constinit const ConstantText parentTreeKey{"ParentTree"};
constinit const ConstantText rootKey{"StructTreeRoot"};

// What a number may be as a key of a tree: any that a reader takes.
constexpr std::int64_t maxKey = (std::int64_t(1) << 31) - 1;

std::optional<std::int64_t> keyOf(const Document& document, const Ref<Value>& value)
{
    const auto number = numberOf(followAll(document, value));
    if (!number || *number < 0 || *number > double(maxKey) || *number != std::floor(*number))
        return {};
    return std::int64_t(*number);
}

} // namespace

StructurePlaces::StructurePlaces(Edit& edit) noexcept : _edit(edit), _document(*edit.document())
{
    const auto catalog = followEntryAs<Dictionary>(_document, *_document.trailer(), PageKeys::root);
    _root = catalog ? followEntryAs<Dictionary>(_document, *catalog, rootKey) : nullptr;
}

void StructurePlaces::find(const std::unordered_set<const Dictionary*>& annotations) noexcept
{
    if (!_root || annotations.empty())
        return;
    _annotations = &annotations;
    std::vector<Element> open = {{nullptr, _root}};
    _visited.insert(_root.get());
    while (!open.empty()) {
        const Element element = std::move(open.back());
        open.pop_back();
        visit(element, open);
    }
    readParents();
    for (const Dictionary* annotation : annotations)
        if (const auto key = keyOf(_document, annotation->find(parentKey)))
            if (const auto found = _parents.find(*key);
                found != _parents.end() && !followAs<Array>(_document, found->second)) {
                _parents.erase(found);
                _areParentsChanged = true;
            }
}

// Notes whether it has some of the annotations, and opens the elements below.
void StructurePlaces::visit(const Element& element, std::vector<Element>& open) noexcept
{
    const Ref<Value> kids = element.dictionary->find(kidsKey);
    const Ref<Array> array = followAs<Array>(_document, kids);
    if (array && !_visited.insert(array.get()).second)
        return;
    bool isChanged = false;
    for (std::uint64_t i = 0; i < (array ? array->size() : 1); ++i) {
        const Ref<Value> kid = array ? array->get(i) : kids;
        const Ref<Dictionary> dictionary = followAs<Dictionary>(_document, kid);
        if (!dictionary)
            continue;
        if (const Dictionary* annotation = annotationOf(*dictionary)) {
            _places.try_emplace(annotation, Place{_changed.size(), {}});
            isChanged = true;
        } else if (_visited.insert(dictionary.get()).second) {
            open.push_back({valueAs<ObjectRef>(kid), dictionary});
        }
    }
    if (isChanged)
        _changed.push_back(element);
}

// The annotation that an element has as its kid, if it is among those that go.
const Dictionary* StructurePlaces::annotationOf(const Dictionary& kid) const noexcept
{
    if (!isNamed(followEntry(_document, kid, PageKeys::type), "OBJR"))
        return nullptr;
    const auto annotation = followEntryAs<Dictionary>(_document, kid, objectKey);
    return annotation && _annotations->contains(annotation.get()) ? annotation.get() : nullptr;
}

void StructurePlaces::readParents() noexcept
{
    std::vector<Ref<Dictionary>> open;
    const auto add = [&](Ref<Dictionary> node) {
        if (node && _visited.insert(node.get()).second)
            open.push_back(std::move(node));
    };
    add(followEntryAs<Dictionary>(_document, *_root, parentTreeKey));
    while (!open.empty()) {
        const Ref<Dictionary> node = std::move(open.back());
        open.pop_back();
        if (const auto pairs = followEntryAs<Array>(_document, *node, numbersKey);
            pairs && _visited.insert(pairs.get()).second)
            readParents(*pairs);
        const auto kids = followEntryAs<Array>(_document, *node, PageKeys::kids);
        if (kids && _visited.insert(kids.get()).second)
            for (std::uint64_t i = 0; i < kids->size(); ++i)
                add(followAs<Dictionary>(_document, kids->get(i)));
    }
}

void StructurePlaces::readParents(const Array& pairs) noexcept
{
    for (std::uint64_t i = 0; i + 1 < pairs.size(); i += 2)
        if (const auto key = keyOf(_document, pairs.get(i)))
            _parents.try_emplace(*key, pairs.get(i + 1));
}

std::optional<std::uint32_t> StructurePlaces::give(const Dictionary& annotation, const Page& page) noexcept
{
    const auto found = _places.find(&annotation);
    if (found == _places.end() || !page.object)
        return {};
    const Ref<ObjectRef>& element = _changed[found->second.element].reference;
    Contents* contents = element ? contentsOf(page) : nullptr;
    if (!contents)
        return {};
    const auto number = std::uint32_t(contents->size());
    contents->push_back(element);
    const Ref<Dictionary> content = Dictionary::create();
    content->set(PageKeys::type, nameValue("MCR"));
    content->set(pageKey, referenceTo(*page.object));
    content->set(contentNumberKey, numberValue(number));
    found->second.contents.push_back(content);
    return number;
}

// Null where what the page has so far can't be extended.
StructurePlaces::Contents* StructurePlaces::contentsOf(const Page& page) noexcept
{
    auto key = keyOf(_document, page.dictionary->find(parentsKey));
    if (const auto known = _newKeys.find(page.dictionary.get()); known != _newKeys.end())
        key = known->second;
    if (key)
        if (const auto known = _contents.find(*key); known != _contents.end())
            return &known->second;
    const auto parents = key ? _parents.find(*key) : _parents.end();
    Contents contents;
    if (parents != _parents.end()) {
        const Ref<Array> array = followAs<Array>(_document, parents->second);
        if (!array || !_visited.insert(array.get()).second)
            return nullptr;
        for (std::uint64_t i = 0; i < array->size(); ++i)
            contents.push_back(array->get(i));
    } else if (!key) {
        key = keyOf(_document, _root->find(nextKey)).value_or(0);
        for (const auto last : {_parents.empty() ? 0 : _parents.rbegin()->first + 1,
                 _contents.empty() ? 0 : _contents.rbegin()->first + 1})
            key = std::max(*key, last);
        if (*key >= maxKey)
            return nullptr;
        _newKeys.emplace(page.dictionary.get(), *key);
        _edit.set(page.dictionary, parentsKey, numberValue(double(*key)));
    }
    return &_contents.emplace(*key, std::move(contents)).first->second;
}

void StructurePlaces::finish() noexcept
{
    for (const Element& element : _changed)
        changeKids(element.dictionary);
    for (auto& [key, contents] : _contents)
        _parents[key] = _edit.objects.add(Array::create(contents));
    if (_areParentsChanged || !_contents.empty())
        writeParents();
}

void StructurePlaces::changeKids(const Ref<Dictionary>& element) noexcept
{
    const Ref<Value> kids = element->find(kidsKey);
    const Ref<Array> array = followAs<Array>(_document, kids);
    std::vector<Ref<Value>> rest;
    for (std::uint64_t i = 0; i < (array ? array->size() : 1); ++i) {
        const Ref<Value> kid = array ? array->get(i) : kids;
        const Ref<Dictionary> held = followAs<Dictionary>(_document, kid);
        const Dictionary* annotation = held ? annotationOf(*held) : nullptr;
        if (!annotation) {
            rest.push_back(kid);
            continue;
        }
        // It may be here twice, or in a later element, too.
        const auto contents = std::exchange(_places.at(annotation).contents, {});
        rest.insert(rest.end(), contents.begin(), contents.end());
    }
    _edit.set(element, kidsKey,
        rest.empty() ? nullptr : rest.size() == 1 ? rest.front() : Ref<Value>(Array::create(rest)));
}

// In leaves below one node, or in that node where it has room.
void StructurePlaces::writeParents() noexcept
{
    constexpr std::size_t room = 512;
    std::vector<Ref<Value>> leaves;
    for (auto entry = _parents.begin(); entry != _parents.end();) {
        const double first = double(entry->first);
        double last = first;
        std::vector<Ref<Value>> pairs;
        for (; entry != _parents.end() && pairs.size() < 2 * room; ++entry) {
            last = double(entry->first);
            pairs.push_back(numberValue(last));
            pairs.push_back(entry->second);
        }
        const Ref<Dictionary> leaf = Dictionary::create();
        leaf->set(numbersKey, Array::create(pairs));
        if (_parents.size() > room)
            leaf->set(limitsKey, arrayOf({first, last}));
        leaves.push_back(_edit.objects.add(leaf));
    }
    Ref<Value> root = leaves.empty() ? Ref<Value>() : leaves.front();
    if (leaves.size() > 1) {
        const Ref<Dictionary> node = Dictionary::create();
        node->set(PageKeys::kids, Array::create(leaves));
        root = _edit.objects.add(node);
    }
    _edit.set(_root, parentTreeKey, root);
    if (!_newKeys.empty())
        _edit.set(_root, nextKey, numberValue(double(_parents.rbegin()->first + 1)));
}

} // namespace Host
