#include <host/pages/PageTree.h>

#include <document/Inspection.h>
#include <host/base/Budget.h>
#include <host/base/ErrorWords.h>
#include <host/base/Following.h>
#include <host/pages/Geometry.h>
#include <host/pages/PageKeys.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/ObjectRef.h>

#include <unordered_map>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constexpr Rectangle letter{0, 0, 612, 792};
constexpr std::uint64_t stepsOfKid = 2; // it may be a page

// What a node hands down, as it is in the dictionaries; null where there is none.
struct Inheritance {
    Ref<Dictionary> resources;
    Ref<Value> mediaBox;
    Ref<Value> cropBox;
    Ref<Value> rotation;
};

// A node whose kids are being walked.
struct OpenNode {
    Ref<Array> kids;
    std::uint64_t next = 0;
    Inheritance inheritance;
};

class Walk {
public:
    Walk(const Document& document, Budget& budget) noexcept : _document(document), _budget(budget) {}

    PageTree run(const Ref<Dictionary>& root)
    {
        _visited.emplace(root.get(), 0);
        open(root, {});
        while (!_open.empty() && _budget.spend(Cost::Steps, stepsOfKid))
            if (OpenNode& node = _open.back(); node.next < node.kids->size())
                visit(node.kids->get(node.next++), Inheritance(node.inheritance));
            else
                _open.pop_back();
        if (_problemCount > _tree.problems.size())
            _tree.problems.push_back(
                "and " + std::to_string(_problemCount - _tree.problems.size()) + " more problems of the page tree");
        return std::move(_tree);
    }

private:
    void visit(const Ref<Value>& kid, Inheritance inheritance);
    bool open(const Ref<Dictionary>& node, Inheritance inheritance);
    void inherit(const Dictionary& dictionary, Inheritance& inheritance) const;
    void addPage(const Ref<Value>& kid, const Ref<Dictionary>& dictionary, const Inheritance& inheritance);
    PageBoxes readBoxes(const Dictionary& page, const Inheritance& inheritance);
    Rectangle readBox(const Ref<Value>& value, const char* name, const Rectangle& fallback, const Rectangle& sheet);
    void tell(std::string problem)
    {
        if (_problemCount++ < Limits::maxSkipped)
            _tree.problems.push_back(std::move(problem));
    }
    // The page that comes next, in words.
    std::string place() const { return "page " + std::to_string(_tree.pages.size() + 1) + ": "; }

    const Document& _document;
    Budget& _budget;
    PageTree _tree;
    std::vector<OpenNode> _open; // from the root on
    std::unordered_map<const Dictionary*, std::size_t> _visited; // with the number of pages before the first visit
    std::size_t _problemCount = 0;
};

void Walk::visit(const Ref<Value>& kid, Inheritance inheritance)
{
    const Ref<Dictionary> dictionary = followAs<Dictionary>(_document, kid);
    if (!dictionary)
        return tell("before " + place() + "a kid of the page tree is no dictionary and was skipped");
    const bool isNode = followEntryAs<Array>(_document, *dictionary, PageKeys::kids)
        && !isNamed(followEntry(_document, *dictionary, PageKeys::type), "Page");
    const bool isFirstVisit = _visited.emplace(dictionary.get(), _tree.pages.size()).second;
    if (!isFirstVisit && isNode)
        return tell("before " + place() + "a node of the page tree is listed twice or in a circle and was skipped");
    if (!isFirstVisit)
        tell(place() + "is in the page tree twice");
    if (isNode)
        open(dictionary, std::move(inheritance));
    else if (isNamed(followEntry(_document, *dictionary, PageKeys::type), "Pages"))
        tell("before " + place() + "a node of the page tree has no kids and was skipped");
    else
        addPage(kid, dictionary, inheritance);
}

// Puts a node on the way down; false when it has no list of kids.
bool Walk::open(const Ref<Dictionary>& node, Inheritance inheritance)
{
    Ref<Array> kids = followEntryAs<Array>(_document, *node, PageKeys::kids);
    if (!kids)
        return tell("the root of the page tree has no kids"), false;
    inherit(*node, inheritance);
    _open.push_back({std::move(kids), 0, std::move(inheritance)});
    return true;
}

void Walk::inherit(const Dictionary& dictionary, Inheritance& inheritance) const
{
    if (Ref<Dictionary> own = followEntryAs<Dictionary>(_document, dictionary, PageKeys::resources))
        inheritance.resources = std::move(own);
    for (const auto& [key, entry] : {std::pair(&PageKeys::mediaBox, &inheritance.mediaBox),
             std::pair(&PageKeys::cropBox, &inheritance.cropBox), std::pair(&PageKeys::rotate, &inheritance.rotation)})
        if (Ref<Value> own = followEntry(_document, dictionary, *key))
            *entry = std::move(own);
}

void Walk::addPage(const Ref<Value>& kid, const Ref<Dictionary>& dictionary, const Inheritance& inheritance)
{
    Page page;
    if (const Ref<ObjectRef> reference = valueAs<ObjectRef>(kid))
        page.object = _document.object(reference);
    page.dictionary = dictionary;
    Inheritance own = inheritance;
    inherit(*dictionary, own);
    page.resources = own.resources;
    page.isInheritingResources = own.resources && own.resources == inheritance.resources;
    const PageBoxes boxes = readBoxes(*dictionary, own);
    const bool isAsBefore = !_tree.pages.empty() && *_tree.pages.back().boxes == boxes;
    page.boxes = isAsBefore ? _tree.pages.back().boxes : std::make_shared<const PageBoxes>(boxes);
    page.firstPlace = _visited[dictionary.get()];
    const auto rotation = degreesOf(own.rotation);
    if (rotation && *rotation % 90 == 0)
        page.rotation = *rotation;
    else if (own.rotation)
        tell(place() + "Rotate is no multiple of 90 and has no effect");
    const auto unit = numberOf(followEntry(_document, *dictionary, PageKeys::userUnit));
    constexpr double maxUnit = 1e6; // far above what a sheet needs
    if (unit && *unit > 0 && *unit <= maxUnit)
        page.userUnit = *unit;
    _tree.pages.push_back(std::move(page));
}

PageBoxes Walk::readBoxes(const Dictionary& page, const Inheritance& inheritance)
{
    PageBoxes boxes;
    Rectangle& sheet = boxes[std::size_t(PageBox::Media)];
    const auto media = rectangleOf(_document, inheritance.mediaBox);
    sheet = media.value_or(letter);
    if (!media)
        tell(place() + "MediaBox is missing or not four numbers, and 612 by 792 points are assumed");
    else if (!media->hasArea())
        tell(place() + "MediaBox has no area");
    const Rectangle crop = readBox(inheritance.cropBox, "CropBox", sheet, sheet);
    boxes[std::size_t(PageBox::Crop)] = crop;
    static constinit const struct {
        PageBox box;
        ConstantText key;
    } others[] = {{PageBox::Bleed, ConstantText("BleedBox")}, {PageBox::Trim, ConstantText("TrimBox")},
        {PageBox::Art, ConstantText("ArtBox")}};
    for (const auto& [box, key] : others)
        boxes[std::size_t(box)] = readBox(followEntry(_document, page, key), "a box", crop, sheet);
    return boxes;
}

// The box within the sheet; `fallback` when there is none, or none with area there.
Rectangle Walk::readBox(const Ref<Value>& value, const char* name, const Rectangle& fallback, const Rectangle& sheet)
{
    if (!value)
        return fallback;
    const auto box = rectangleOf(_document, value);
    if (box && box->within(sheet).hasArea())
        return box->within(sheet);
    tell(place() + name + " is no rectangle on the sheet and has no effect");
    return fallback;
}

} // namespace

Result<PageTree> pages(const Ref<Document>& document, std::uint64_t limitFactor) noexcept
{
    if (!document)
        return codeRefusal(ErrNullArgument);
    const std::uint32_t codeBefore = Error::get();
    const Ref<Dictionary> trailer = document->trailer();
    const auto catalog = trailer ? followEntryAs<Dictionary>(*document, *trailer, PageKeys::root) : nullptr;
    if (!catalog)
        return codeRefusal(ErrNoRoot);
    const auto root = followEntryAs<Dictionary>(*document, *catalog, PageKeys::pages);
    if (!root)
        return codeRefusal(ErrBadPages);
    Budget budget(fileSizeOf(document), limitFactor);
    PageTree tree = Walk(*document, budget).run(root);
    Error::set(codeBefore);
    if (budget.isExceeded())
        return budget.refusal().withPrefix("the page tree: ");
    return tree;
}

} // namespace Host
