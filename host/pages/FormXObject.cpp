#include <host/pages/FormXObject.h>

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/base/Following.h>
#include <host/pages/PageContent.h>
#include <host/pages/PageKeys.h>
#include <host/pages/SameContents.h>
#include <host/streams/Compress.h>
#include <host/streams/FilterChain.h>
#include <host/streams/StoredBytes.h>
#include <values/Name.h>
#include <values/Number.h>
#include <values/ObjectRefObj.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText filterKey{"Filter"};
constinit const ConstantText parametersKey{"DecodeParms"};
constinit const ConstantText lengthKey{"Length"};

// Two entries that are equal, or on neither side.
bool isSameEntry(const Dictionary& a, const Dictionary& b, const Ref<::String>& key)
{
    const Ref<Value> left = a.find(key);
    const Ref<Value> right = b.find(key);
    return left && right ? left->equal(right) : left == right;
}

bool canBeKept(const std::vector<FilterStep>& filters)
{
    return !filters.empty()
        && std::all_of(filters.begin(), filters.end(), [](const FilterStep& step) { return step.isSupported(); });
}

} // namespace

FormXObjects::FormXObjects(Edit& edit, Ref<Document> source, std::uint64_t limitFactor) noexcept
    : _edit(edit), _source(std::move(source)), _copying(edit.objects, _source), _budget(_source, limitFactor)
{
}

Result<FormXObject> FormXObjects::make(const Page& page, std::size_t index, PageBox box) noexcept
{
    const auto found = _made.find({index, box});
    if (found != _made.end())
        return found->second;
    FormXObject form{nullptr, page.box(box), Matrix::turning(page.rotation)};
    auto made = draft(page, form);
    if (!made)
        return made.refusal();
    form.isDamaged = made->isDamaged;
    form.reference = findSame(*made, page);
    if (!form.reference) {
        auto added = complete(page, *made);
        if (!added)
            return added.refusal();
        form.reference = *added;
    }
    _made.emplace(std::pair(index, box), form);
    return form;
}

Result<FormXObjects::Draft> FormXObjects::draft(const Page& page, const FormXObject& form) noexcept
{
    Draft draft{Dictionary::create(), {}};
    Dictionary& entries = *draft.dictionary;
    entries.set(PageKeys::type, nameValue("XObject"));
    entries.set(PageKeys::subtype, nameValue("Form"));
    entries.set(PageKeys::boundingBox, arrayOf({form.box.left, form.box.bottom, form.box.right, form.box.top}));
    const Matrix& matrix = form.matrix;
    if (matrix != Matrix())
        entries.set(PageKeys::matrix, arrayOf({matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}));
    if (auto refusal = fillContent(page, draft))
        return *refusal;
    return draft;
}

// The stored data of a page with one stream that has filters, else all of its content, compressed.
std::optional<Refusal> FormXObjects::fillContent(const Page& page, Draft& draft) noexcept
{
    const PageContent content = contentOf(*_source, *page.dictionary);
    const Ref<Dictionary> only = content.streams.size() == 1 ? content.streams[0]->dict() : nullptr;
    const auto filters = only ? filtersOf(_source, *only) : std::vector<FilterStep>();
    if (!filters)
        return filters.refusal();
    if (!canBeKept(*filters)) {
        auto joined = joinedContent(_source, content, _budget);
        if (!joined)
            return joined.refusal();
        draft.isDamaged = joined->isDamaged;
        draft.stored = compressedBytes(joined->bytes);
        draft.dictionary->set(filterKey, nameValue("FlateDecode"));
        return {};
    }
    const Ref<Interfaces::Stripe> data = _source->streamData(content.streams[0], false);
    if (data && !_budget.spend(Cost::StoredData, data->size()))
        return _budget.refusal();
    auto stored = storedBytes(_source, content.streams[0]);
    if (!stored)
        return stored.refusal();
    draft.stored = std::move(*stored);
    for (const ConstantText* key : {&filterKey, &parametersKey})
        if (const Ref<Value> value = followEntry(*_source, *only, *key)) {
            Ref<Value> copied = _copying.copy(value);
            if (!copied)
                return codeRefusal(Error::get());
            draft.dictionary->set(*key, std::move(copied));
        }
    return {};
}

// Adds what the content refers to, and enters the object.
Result<Ref<ObjectRef>> FormXObjects::complete(const Page& page, Draft& draft) noexcept
{
    Ref<Value> resources = page.resources ? copyResources(page.resources) : Ref<Value>(Dictionary::create());
    if (!resources)
        return codeRefusal(Error::get(), "its resources: ");
    draft.dictionary->set(PageKeys::resources, std::move(resources));
    if (const Ref<Value> group = followEntry(*_source, *page.dictionary, PageKeys::group)) {
        Ref<Value> copied = _copying.copy(group);
        if (!copied)
            return codeRefusal(Error::get(), "its group: ");
        draft.dictionary->set(PageKeys::group, std::move(copied));
    }
    return _edit.objects.add(createStream(draft.dictionary, draft.stored));
}

// Pages that share resources share their copy. Null with the code of `ValueCopying::copy`.
Ref<Value> FormXObjects::copyResources(const Ref<Dictionary>& resources) noexcept
{
    Ref<Value>& place = _resources[resources.get()];
    if (!place) {
        Ref<Value> copied = _copying.copy(resources);
        place = copied ? _edit.objects.add(std::move(copied)) : nullptr;
    }
    return place;
}

// A form XObject of the document that is the page already; null when there is none.
Ref<ObjectRef> FormXObjects::findSame(const Draft& draft, const Page& page) noexcept
{
    listForms();
    const Document& document = *_edit.document();
    const auto [first, last] = _known.equal_range(draft.stored.size());
    for (auto known = first; known != last && _triesLeft > 0; ++known) {
        const Ref<Dictionary> dictionary = known->second.stream->dict();
        bool isSame = true;
        for (const ConstantText* key : {&PageKeys::boundingBox, &PageKeys::matrix, &filterKey, &parametersKey})
            isSame = isSame && isSameEntry(*dictionary, *draft.dictionary, *key);
        const auto stored = isSame ? storedBytes(_edit.document(), known->second.stream)
                                   : Result<std::vector<std::uint8_t>>(std::vector<std::uint8_t>());
        if (!isSame || !stored || *stored != draft.stored)
            continue;
        --_triesLeft;
        SameContents contents(_edit.document(), _source, _budget);
        const Ref<Value> own = followEntry(document, *dictionary, PageKeys::resources);
        const Ref<Value> resources = page.resources ? Ref<Value>(page.resources) : Ref<Value>(Dictionary::create());
        const Ref<Value> ownGroup = followEntry(document, *dictionary, PageKeys::group);
        const Ref<Value> group = followEntry(*_source, *page.dictionary, PageKeys::group);
        if (contents.areSame(own, resources) && ((!ownGroup && !group) || contents.areSame(ownGroup, group)))
            return known->second.reference;
    }
    return nullptr;
}

void FormXObjects::listForms() noexcept
{
    if (_isListed)
        return;
    _isListed = true;
    for (const Ref<PDF::Object>& object : objectsOf(_edit.document())) {
        Ref<Stream> stream = valueAs<Stream>(object->value());
        const Ref<Dictionary> dictionary = stream ? stream->dict() : nullptr;
        if (!dictionary || !isNamed(dictionary->find(PageKeys::subtype), "Form"))
            continue;
        const auto length = followEntryAs<Number>(*_edit.document(), *dictionary, lengthKey);
        if (length)
            _known.emplace(std::size_t(length->intPart()),
                Known{::make<ObjectRefObj>(object->id(), object->generation()), std::move(stream)});
    }
}

} // namespace Host
