#include <document/PageComposition.h>

#include <document/BackgroundPages.h>
#include <document/Keys.h>
#include <document/Lookup.h>
#include <document/Report.h>
#include <values/ArrayObj.h>
#include <values/DictionaryObj.h>
#include <values/ObjectRef.h>

#include <algorithm>

// Putting pages of another document beneath those of this one: first everything is read that the work
// needs, then resources are merged, content streams added, and the pages updated.

namespace Libraries::Files::PDF {

namespace {

// Puts references to `streams` before the content of a page. `previous` is what was there, null for
// nothing; its array, if it is one, stays as it is.
bool prependContents(
    const Ref<Dictionary>& page, const std::vector<Ref<ObjectRef>>& streams, Ref<Value>& previous)
{
    if (!page)
        return refuse(ErrNullArgument);
    previous = page->find(Keys::contents);
    ArrayObj::Elements contents(streams.begin(), streams.end());
    if (previous && previous->type() == Value::Type::ObjectRef) {
        contents.push_back(previous);
    } else if (previous && previous->type() == Value::Type::Array) {
        const Ref<Array> array = previous.cast<Array>();
        if (!array)
            return report.fail(ErrBadContents, "Failed to cast contents array to Array");
        for (std::uint64_t i = 0; i < array->size(); ++i) {
            contents.push_back(array->get(i));
            if (!contents.back())
                return report.fail(ErrBadContents, "Contents element is NULL: ", i);
        }
    } else if (previous) {
        return report.fail(
            ErrBadContents, "Content of page is neither object reference nor array ", previous->type());
    }
    return page->set(Keys::contents, make<ArrayObj>(std::move(contents)))
        || report.fail(ErrNoResource, "Failed to set Contents entry");
}

// Puts saved content back. Deliberate: a page that had none can't get that state back.
bool setContents(const Ref<Dictionary>& page, const Ref<Value>& contents)
{
    if (!page || !contents)
        return refuse(ErrNullArgument);
    if (contents->type() != Value::Type::ObjectRef && contents->type() != Value::Type::Array)
        return report.fail(ErrInvalidArgument, "New content for page is neither object reference nor array: ",
            contents->type());
    return page->set(Keys::contents, contents) || report.fail(ErrNoResource, "Failed to update Contents of page");
}

} // namespace

bool DocumentObj::addBackground(Ref<Document> foreign, BackgroundMode mode) noexcept
{
    if (!foreign)
        return refuse(ErrNullArgument);
    return Background(*this, std::move(foreign), mode).add();
}

DocumentObj::Background::Background(DocumentObj& document, Ref<Document> foreign, BackgroundMode mode) noexcept
    : _document(document), _foreign(std::move(foreign)), _mode(mode), _foreignCloning(document, _foreign),
      _ownCloning(document, Ref<Document>(&document))
{
}

bool DocumentObj::Background::add() noexcept
{
    // Deliberate: whoever looks while the pages are sought, as a log sink may, finds the slot cleared.
    const std::uint32_t codeBefore = Error::get();
    Error::set(0);
    if (!readForeignPages())
        return false;
    Error::set(0);
    if (!readPages(_document, _pages))
        return false;
    Error::set(codeBefore);
    if (_pages.empty())
        return true;
    if (!readPageCatalog() || !readContents())
        return false;
    placePages();
    if (!readCatalogResources() || !mergeResources() || !mergeCatalogResources() || !addStreams()
        || !updateContents())
        return false;
    _document.raiseVersion(_foreign->version());
    _document._changed = true;
    return true;
}

bool DocumentObj::Background::readForeignPages() noexcept
{
    StackVector<Ref<PDF::Object>> pages;
    if (!readPages(*_foreign, pages))
        return refuse(foreignCode(ErrBadPages));
    if (pages.empty())
        return report.fail(ErrForeignPage, "Foreign document has no pages");
    const std::size_t count = foreignPagesRead(_mode, pages.size());
    for (std::size_t i = 0; i < count; ++i) {
        Ref<Dictionary> dictionary = _foreign->valueAsDict(pages[i]->value());
        if (!dictionary)
            return report.fail(ErrForeignContent, "Failed to retrieve dictionary of foreign page ", i);
        _foreignPages.push_back({std::move(dictionary), {}});
    }
    if (count < pages.size())
        report.information("Background has more than 1 page: ", pages.size());
    return true;
}

bool DocumentObj::Background::readPageCatalog() noexcept
{
    const Ref<PDF::Object> catalog = _document.getPageCatalog();
    if (!catalog)
        return report.fail(ErrBadPages, "Failed to retrieve page catalog");
    _pageCatalog = catalog->valueAsDictionary();
    return _pageCatalog || report.fail(ErrBadPages, "Failed to retrieve page catalog dictionary");
}

bool DocumentObj::Background::readContents() noexcept
{
    return std::all_of(
        _foreignPages.begin(), _foreignPages.end(), [this](ForeignPage& page) { return readContent(page); });
}

bool DocumentObj::Background::readContent(ForeignPage& page) noexcept
{
    Ref<Value> contents;
    if (!findEntry(*page.dictionary, Keys::contents, contents))
        return report.fail(ErrForeignContent, "Failed to retrieve foreign page contents");
    if (!contents) {
        report.oddity("Foreign page has no contents");
        return refuse(ErrForeignPage);
    }
    if (const Ref<ObjectRef> reference = valueAs<ObjectRef>(contents))
        return readContentStream(page, reference, std::nullopt);
    if (contents->type() == Value::Type::Array)
        return readContentArray(page, contents);
    return report.fail(
        ErrForeignContent, "Foreign page content's has unexpected type: ", contents->type());
}

bool DocumentObj::Background::readContentArray(ForeignPage& page, const Ref<Value>& contents) noexcept
{
    const Ref<Array> array = contents.cast<Array>();
    if (!array)
        return report.fail(ErrForeignContent, "Failed to cast page content array to Array");
    for (std::uint64_t i = 0; i < array->size(); ++i) {
        const Ref<Value> element = array->get(i);
        const Ref<ObjectRef> reference = valueAs<ObjectRef>(element);
        if (!reference)
            return report.fail(ErrForeignContent, "Content element ", i, " of foreign page has unexpected type: ",
                element ? element->type() : Value::Type::Invalid);
        if (!readContentStream(page, reference, i))
            return false;
    }
    return true;
}

// One content stream of a foreign page; `element` is its index in an array, if it is in one.
bool DocumentObj::Background::readContentStream(
    ForeignPage& page, const Ref<ObjectRef>& reference, std::optional<std::uint64_t> element) noexcept
{
    const auto fail = [element](const char* text, const char* joint) -> Failure {
        return element ? report.fail(ErrForeignContent, text, joint, *element) : report.fail(ErrForeignContent, text);
    };
    const Ref<PDF::Object> object = _foreign->object(reference);
    if (!object && element)
        return report.fail(ErrForeignContent, "Failed to resolve element ", *element, " of foreign page");
    if (!object)
        return report.fail(ErrForeignContent, "Failed to resolve content stream of foreign page");
    page.contentIds.push_back(object->id());
    if (_foreignStreams.contains(object->id()))
        return true;
    const Ref<Value> value = object->value();
    if (!value)
        return fail("Referenced content object of the page has no value", " in element ");
    if (value->type() != Value::Type::Stream)
        return fail("Content stream of foreign page is not of type stream", " for element ");
    Ref<Stream> stream = value.cast<Stream>();
    if (!stream)
        return fail("Failed to cast content stream of foreign page to Stream", " for element ");
    _foreignStreams.emplace(object->id(), std::move(stream));
    return true;
}

void DocumentObj::Background::placePages() noexcept
{
    const std::size_t count = pagesWithBackground(_mode, _pages.size(), _foreignPages.size());
    for (std::size_t i = 0; i < count; ++i)
        _placements.push_back({_pages[i], foreignPageBeneath(i, _foreignPages.size()), nullptr});
}

bool DocumentObj::Background::readCatalogResources() noexcept
{
    return Merging::readResources(*_pageCatalog, _document, _catalogResources)
        || report.fail(ErrBadPages, "Failed to retrieve page catalog resource dictionary");
}

bool DocumentObj::Background::mergeResources() noexcept
{
    return std::all_of(_placements.begin(), _placements.end(),
        [this](Placement& placement) { return mergeResources(placement); });
}

// A page with resources of its own inherits none: what the root of the page tree has is copied down
// before the foreign page's are added.
bool DocumentObj::Background::mergeResources(Placement& placement) noexcept
{
    const Ref<::String> page = placement.page->asText();
    placement.dictionary = placement.page->valueAsDictionary();
    if (!placement.dictionary)
        return report.fail(ErrBadContents, "Failed to retrieve page dictionary for page ", page);
    Ref<Dictionary> resources;
    if (!Merging::readResources(*placement.dictionary, _document, resources))
        return report.fail(ErrBadContents, "Failed to retrieve resources for page ", page);
    Ref<Dictionary> foreign;
    if (!Merging::readResources(*_foreignPages[placement.foreignIndex].dictionary, *_foreign, foreign))
        return report.fail(
            ErrBadContents, "Failed to retrieve resources for foreign page ", placement.foreignIndex);
    if (!foreign) {
        _needsCatalogMerge = true;
        return true;
    }
    if (!resources) {
        resources = make<DictionaryObj>();
        if (!placement.dictionary->set(Keys::resources, resources))
            return report.fail(ErrNoResource, "Failed to set resource dictionary for page ", page);
    }
    if (_catalogResources && !Merging(_document, _ownCloning).merge(*_catalogResources, *resources))
        return report.fail(ErrNoResource, "Failed to integrate page catalog resources into page ", page);
    if (!Merging(_document, _foreignCloning).merge(*foreign, *resources))
        return report.fail(ErrNoResource, "Failed to add resources of foreign page ", placement.foreignIndex,
            " to page ", page);
    return true;
}

// What foreign pages inherit from the root of their tree goes into the root of this one, where only
// pages without resources of their own see it.
bool DocumentObj::Background::mergeCatalogResources() noexcept
{
    if (!_needsCatalogMerge)
        return true;
    const Ref<PDF::Object> catalog = _foreign->getPageCatalog();
    if (!catalog)
        return report.fail(ErrBadPages, "Failed to retrieve foreign page catalog object");
    const Ref<Dictionary> dictionary = catalog->valueAsDictionary();
    if (!dictionary)
        return report.fail(ErrBadPages, "Failed to retrieve foreign page catalog dictionary");
    Ref<Dictionary> foreign;
    if (!Merging::readResources(*dictionary, *_foreign, foreign))
        return report.fail(ErrBadPages, "Failed to retrieve foreign page catalog resource dictionary");
    if (!foreign)
        return true;
    if (!_catalogResources) {
        _catalogResources = make<DictionaryObj>();
        if (!_pageCatalog->set(Keys::resources, _catalogResources))
            return report.fail(
                ErrNoResource, "Failed to create new resource dictionary for page catalog dictionary");
    }
    return Merging(_document, _foreignCloning).merge(*foreign, *_catalogResources)
        || report.fail(ErrNoResource, "Failed to add resources to page catalog resource dictionary");
}

// Deliberate: every stream that was read is added, whether a page uses it or not.
bool DocumentObj::Background::addStreams() noexcept
{
    for (const auto& [id, stream] : _foreignStreams) {
        if (!_foreign->streamData(stream, false)) {
            report.line("Failed to retrieve foreign stream");
            removeAddedObjects();
            return refuse(ErrForeignStreamData);
        }
        Ref<ObjectRef> added = _foreignCloning.cloneObject(stream);
        if (!added) {
            report.line("Failed to add foreign stream");
            removeAddedObjects();
            return refuse(ErrForeignStreamAdd);
        }
        _addedStreams.emplace(id, std::move(added));
    }
    return true;
}

bool DocumentObj::Background::updateContents() noexcept
{
    for (const Placement& placement : _placements)
        if (!updateContents(placement)) {
            restoreContents(*placement.page);
            _document._changed = true; // also where nothing was added
            return refuse(ErrNoResource);
        }
    return true;
}

bool DocumentObj::Background::updateContents(const Placement& placement) noexcept
{
    std::vector<Ref<ObjectRef>> streams;
    for (const std::uint32_t id : _foreignPages[placement.foreignIndex].contentIds) {
        const auto added = _addedStreams.find(id);
        if (added == _addedStreams.end())
            return report.line("Failed to retrieve stream reference for ID ", id, " to add to page ",
                placement.page->asText());
        streams.push_back(added->second);
    }
    Ref<Value> previous;
    if (!prependContents(placement.dictionary, streams, previous))
        return report.line("Failed to update page ", placement.page->asText());
    _savedContents.push_back(std::move(previous));
    return true;
}

// Takes the copies of content streams out of the table again, in one pass over it.
void DocumentObj::Background::removeAddedObjects() noexcept
{
    std::unordered_set<std::uint32_t> removedIds;
    for (const auto& [foreignId, reference] : _addedStreams) {
        if (reference && _document.object(reference)) {
            removedIds.insert(reference->id());
            continue;
        }
        Error::set(reference ? ErrUnresolved : ErrNullArgument);
        report.oddity("Failed to remove added object ", reference ? reference->asText() : nullptr);
        _document._changed = true;
    }
    std::erase_if(_document._objects,
        [&removedIds](const Ref<PDF::Object>& object) { return removedIds.contains(object->id()); });
}

// Gives the pages before the failing one, which was not changed, their content back.
// Deliberate: saved values belong to pages by position, so a page that is listed twice gets that of its
// second place, which is the one that its first place made.
void DocumentObj::Background::restoreContents(const PDF::Object& failingPage) noexcept
{
    for (std::size_t i = 0; i < _savedContents.size() && _pages[i].get() != &failingPage; ++i) {
        const Ref<Dictionary> dictionary = _pages[i]->valueAsDictionary();
        if (!dictionary) {
            // Deliberate: the line names the failing page, not the one that was wanted.
            report.oddity("Failed to retrieve dictionary of page ", failingPage.asText());
            _document._changed = true;
            return;
        }
        if (!setContents(dictionary, _savedContents[i])) {
            report.oddity("Failed to restore contents of page ", _pages[i]->asText());
            _document._changed = true;
            return;
        }
    }
}

} // namespace Libraries::Files::PDF
