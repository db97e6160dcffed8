#include <host/pages/Drawing.h>

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/base/Following.h>
#include <host/pages/ContentBalance.h>
#include <host/pages/PageContent.h>
#include <host/pages/PageKeys.h>
#include <host/streams/Compress.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/Boolean.h>
#include <values/Name.h>
#include <values/ObjectRef.h>

#include <algorithm>
#include <charconv>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constexpr std::string_view namePrefix = "Fx";

// The number of a name like ours; 0 for any other.
std::uint64_t numberOfName(const ::String& name)
{
    std::string text;
    name.forEach([&text](std::uint32_t c) { text += c < 128 ? char(c) : '?'; });
    std::uint64_t number = 0;
    if (text.starts_with(namePrefix) && text.size() < 18)
        std::from_chars(text.data() + namePrefix.size(), text.data() + text.size(), number);
    return number;
}

// Longer arrays of contents become an object, so that pages can share them.
constexpr std::uint64_t maxDirectContents = 16;

} // namespace

Drawing::Drawing(Edit& edit, const PageTree& tree, std::uint64_t limitFactor) noexcept
    : _edit(edit), _tree(tree), _budget(edit.document(), limitFactor)
{
}

void Drawing::add(std::size_t page, const Ref<ObjectRef>& xObject, const Matrix& matrix, Layer layer,
    std::optional<std::uint32_t> contentNumber)
{
    if (_matrices.empty() || _matrices.back() != matrix)
        _matrices.push_back(matrix);
    _items.push_back({std::uint32_t(_tree.pages[page].firstPlace), std::uint32_t(indexOf(xObject)),
        std::uint32_t(_matrices.size() - 1), layer, contentNumber});
}

std::optional<Refusal> Drawing::prepare() noexcept
{
    std::ranges::stable_sort(_items, {}, &Item::page);
    chooseNames();
    _isTagged = isTagged();
    for (auto first = _items.cbegin(); first != _items.cend();) {
        const auto last = std::find_if(
            first, _items.cend(), [first](const Item& item) { return item.page != first->page; });
        const Page& page = _tree.pages[first->page];
        if (auto refusal = changeContents(page, first->page, textsOf(first, last)))
            return refusal->withPrefix("page " + std::to_string(first->page + 1) + ": ");
        for (; first != last; ++first)
            extendResources(page, first->xObject);
    }
    return {};
}

// All names are like "Fx7", with numbers after those that are in use.
void Drawing::chooseNames() noexcept
{
    for (const Item& item : _items)
        if (const Ref<Dictionary>& resources = _tree.pages[item.page].resources)
            noteNames(*resources);
}

void Drawing::noteNames(const Dictionary& resources) noexcept
{
    if (!_noted.insert(&resources).second)
        return;
    const auto categories = resources.keys();
    for (const Ref<::String>& category : *categories) {
        const auto names = followEntryAs<Dictionary>(*_edit.document(), resources, category);
        if (!names || !_noted.insert(names.get()).second)
            continue;
        const auto keys = names->keys();
        for (const Ref<::String>& name : *keys)
            _lastNumber = std::max(_lastNumber, numberOfName(*name));
    }
}

std::size_t Drawing::indexOf(const Ref<ObjectRef>& xObject)
{
    const auto [found, isNew] = _indices.emplace(xObject->id(), _xObjects.size());
    if (isNew)
        _xObjects.push_back(xObject);
    return found->second;
}

std::string Drawing::nameOf(std::size_t xObject) const
{
    return std::string(namePrefix) + std::to_string(_lastNumber + 1 + xObject);
}

Drawing::Texts Drawing::textsOf(Items::const_iterator first, Items::const_iterator last) const
{
    Texts texts;
    for (; first != last; ++first) {
        std::string& text = first->layer == Layer::Beneath ? texts.beneath : texts.above;
        const Matrix& matrix = _matrices[first->matrix];
        const std::string place = matrix == Matrix() ? "" : matrixText(matrix) + " cm ";
        std::string mark = _isTagged ? "/Artifact BMC " : "";
        if (first->contentNumber)
            mark = "/Form <</MCID " + std::to_string(*first->contentNumber) + ">> BDC ";
        text += mark + "q " + place + "/" + nameOf(first->xObject) + " Do Q" + (mark.empty() ? "" : " EMC") + "\n";
    }
    return texts;
}

bool Drawing::isTagged() const noexcept
{
    static constinit const ConstantText structure{"StructTreeRoot"};
    static constinit const ConstantText markInfo{"MarkInfo"};
    static constinit const ConstantText marked{"Marked"};
    const Document& document = *_edit.document();
    const auto catalog = followEntryAs<Dictionary>(document, *document.trailer(), PageKeys::root);
    const auto info = catalog ? followEntryAs<Dictionary>(document, *catalog, markInfo) : nullptr;
    const auto isMarked = info ? followEntryAs<Boolean>(document, *info, marked) : nullptr;
    return (isMarked && isMarked->value()) || (catalog && followEntry(document, *catalog, structure));
}

std::optional<Refusal> Drawing::changeContents(const Page& page, std::size_t index, const Texts& texts) noexcept
{
    const Ref<Value> entry = page.dictionary->find(PageKeys::contents);
    const bool isShareable = entry && entry->type() == Value::Type::ObjectRef;
    const Ref<Value> held = isShareable ? followAll(*_edit.document(), entry) : nullptr;
    const auto key = std::make_tuple(
        static_cast<const Value*>(held.get()), static_cast<const Dictionary*>(page.resources.get()),
        texts.beneath + '\0' + texts.above);
    if (const auto found = _contents.find(key); held && found != _contents.end()) {
        _edit.set(page.dictionary, PageKeys::contents, found->second);
        return {};
    }
    auto contents = contentsOf(page, index, texts);
    if (!contents)
        return contents.refusal();
    if (held)
        _contents.emplace(key, *contents);
    _edit.set(page.dictionary, PageKeys::contents, std::move(*contents));
    return {};
}

Result<Ref<Value>> Drawing::contentsOf(const Page& page, std::size_t index, const Texts& texts) noexcept
{
    std::vector<Ref<Value>> contents = contentOf(*_edit.document(), *page.dictionary).references;
    if (!_budget.spend(Cost::Steps, contents.size()))
        return _budget.refusal();
    if (!texts.above.empty() && !contents.empty())
        if (auto refusal = enclose(page, index, contents))
            return *refusal;
    if (!texts.beneath.empty())
        contents.insert(contents.begin(), streamOf(texts.beneath));
    if (!texts.above.empty())
        contents.push_back(streamOf(texts.above));
    if (contents.size() == 1)
        return contents.front();
    Ref<Value> array = Array::create(contents);
    if (contents.size() > maxDirectContents)
        return Ref<Value>(_edit.objects.add(array));
    return array;
}

// Brings the graphics state after the content back to that before it.
std::optional<Refusal> Drawing::enclose(
    const Page& page, std::size_t index, std::vector<Ref<Value>>& contents) noexcept
{
    const auto joined = joinedContent(_edit.document(), contentOf(*_edit.document(), *page.dictionary), _budget);
    if (!joined)
        return joined.refusal();
    const ContentBalance balance = balanceOf(joined->bytes);
    if (!balance.isBroken && !joined->isDamaged) {
        contents.insert(contents.begin(), streamOf("q\n"));
        std::string end;
        for (std::size_t i = 0; i <= balance.openStates; ++i)
            end += "Q ";
        contents.push_back(streamOf(end + "\n"));
        return {};
    }
    // What it leaves open can't get out of an XObject.
    auto form = asForm(page, joined->bytes);
    if (!form)
        return form.refusal();
    const std::size_t xObject = indexOf(valueAs<ObjectRef>(*form));
    extendResources(page, xObject);
    contents = {streamOf("q /" + nameOf(xObject) + " Do Q\n")};
    _warnings.push_back("page " + std::to_string(index + 1)
        + ": its content leaves something open or closes what is not open, and was made an XObject of its own");
    return {};
}

Result<Ref<Value>> Drawing::asForm(const Page& page, const std::vector<std::uint8_t>& content) noexcept
{
    const Ref<Dictionary> entries = Dictionary::create();
    const Rectangle& sheet = page.box(PageBox::Media);
    entries->set(PageKeys::type, nameValue("XObject"));
    entries->set(PageKeys::subtype, nameValue("Form"));
    entries->set(PageKeys::boundingBox, arrayOf({sheet.left, sheet.bottom, sheet.right, sheet.top}));
    entries->set(::String::create("Filter"), nameValue("FlateDecode"));
    Ref<Value> resources = Dictionary::create();
    if (page.resources)
        resources = ValueCopying(_edit.objects, _edit.document()).copy(page.resources);
    if (!resources)
        return codeRefusal(Error::get());
    entries->set(PageKeys::resources, std::move(resources));
    return Ref<Value>(_edit.objects.add(createStream(entries, compressedBytes(content))));
}

Ref<Value> Drawing::streamOf(const std::string& text) noexcept
{
    Ref<Value>& stream = _streams[text];
    if (!stream)
        stream = _edit.objects.add(contentStream(text));
    return stream;
}

void Drawing::extendResources(const Page& page, std::size_t xObject) noexcept
{
    const Ref<Dictionary> resources = resourcesToExtend(page);
    const Ref<::String> name = ::String::create(nameOf(xObject).c_str());
    const auto own = followEntryAs<Dictionary>(*_edit.document(), *resources, PageKeys::xObject);
    if (own && _extended.emplace(own.get(), xObject).second)
        _edit.set(own, name, _xObjects[xObject]);
    if (own)
        return;
    Ref<Dictionary>& made = _newXObjects[resources.get()];
    if (!made) {
        made = Dictionary::create();
        _edit.set(resources, PageKeys::xObject, made);
    }
    made->set(name, _xObjects[xObject]);
}

// The page's own dictionary, or one that it gets: a copy of what it inherits, or an empty one.
Ref<Dictionary> Drawing::resourcesToExtend(const Page& page) noexcept
{
    if (page.resources && !page.isInheritingResources)
        return page.resources;
    SharedResources& shared = _copies[page.resources.get()];
    if (!shared.dictionary) {
        const Ref<Value> copy
            = page.resources ? ValueCopying(_edit.objects, _edit.document()).copy(page.resources) : nullptr;
        shared.dictionary = copy ? valueAs<Dictionary>(copy) : Dictionary::create();
        shared.reference = _edit.objects.add(shared.dictionary);
    }
    _edit.set(page.dictionary, PageKeys::resources, shared.reference);
    return shared.dictionary;
}

} // namespace Host
