#include <host/pages/Background.h>

#include <document/BackgroundPages.h>
#include <document/Inspection.h>
#include <document/Keys.h>
#include <document/Resolve.h>
#include <host/base/ErrorWords.h>
#include <host/losses/PartialMarks.h>
#include <host/pages/MergeForecast.h>
#include <values/Array.h>
#include <values/Object.h>
#include <values/Stream.h>

#include <algorithm>
#include <map>
#include <set>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// The refusal with the place that it is about.
Refusal at(const std::string& place, const Refusal& refusal)
{
    return refusal.withPrefix(place + ": ");
}

Refusal conflict(std::string message)
{
    return {Reason::Conflict, std::move(message)};
}

std::string pageLabel(std::size_t index)
{
    return "page " + std::to_string(index + 1);
}

// Which default color spaces there are, a bit each: what content that names none is drawn with.
unsigned defaultSpacesOf(const Resources& resources)
{
    static constinit const ConstantText category{"ColorSpace"};
    static constinit const ConstantText defaults[] = {
        ConstantText("DefaultGray"), ConstantText("DefaultRGB"), ConstantText("DefaultCMYK")};
    const auto spaces = resources.find(category);
    unsigned bits = 0;
    for (const Ref<::String>& name : defaults)
        bits = bits << 1 | unsigned(spaces != resources.end() && spaces->second->names.contains(name));
    return bits;
}

// Pages that a warning is about.
struct Pages {
    std::size_t first = 0;
    std::size_t count = 0;

    void add(std::size_t index)
    {
        if (count++ == 0)
            first = index;
    }
    std::string label() const
    {
        return pageLabel(first) + (count > 1 ? " (and " + std::to_string(count - 1) + " more)" : "");
    }
};

// Goes through the stages of `addBackground` beforehand. What fails in the reading half is left to it, since
// it changes nothing then.
class Preflight {
public:
    Preflight(const Ref<Document>& document, const Ref<Document>& foreign, BackgroundMode mode,
        const BackgroundOptions& options);

    // The first reason to refuse, or a limit, which comes before all others.
    std::optional<Refusal> run();
    std::size_t pageCount() const { return _pageCount; }
    std::vector<std::string> warnings() const;

private:
    std::optional<Refusal> findReason();
    bool spendStreams();
    bool spendContents(const Dictionary& page, std::size_t foreignIndex);
    std::optional<Refusal> checkPage(std::size_t index, const Ref<Dictionary>& page);
    std::optional<Refusal> merge(std::size_t index, const Resources& foreign, const Dictionary& page);
    std::optional<Refusal> checkInheritingPages();
    std::optional<Refusal> checkInheritingPage(std::size_t index, const Resources& inherited);

    const Ref<Document> _document;
    const Ref<Document> _foreign;
    const StackVector<Ref<PDF::Object>> _pages;
    StackVector<Ref<PDF::Object>> _foreignPages; // those that are used
    std::size_t _pageCount = 0;                  // that get a background
    const bool _isForced;
    Budget _budget;
    MergeForecast _forecast;
    std::map<const Dictionary*, std::uint64_t> _contents; // how many parts the contents of a page have so far
    std::shared_ptr<Resources> _rootResources;
    std::vector<std::uint64_t> _foreignParts; // of the contents of each foreign page
    std::vector<std::size_t> _inheriting; // pages beneath which a foreign one goes that inherits its resources
    Pages _lacking;                  // those among them that don't see all of these
    std::string _missing;            // what the first of them doesn't see
    Pages _recolored;                // with other default color spaces than what is drawn there was made with
    std::size_t _copyCount = 0;      // pages that get copies of their own
};

Preflight::Preflight(const Ref<Document>& document, const Ref<Document>& foreign, BackgroundMode mode,
    const BackgroundOptions& options)
    : _document(document), _foreign(foreign), _pages(document->getPages()), _foreignPages(foreign->getPages()),
      _isForced(options.isForced), _budget(sizeOf(document) + sizeOf(foreign), options.limitFactor),
      _forecast(document, foreign, _budget)
{
    _foreignPages.resize(foreignPagesRead(mode, _foreignPages.size()));
    _pageCount = pagesWithBackground(mode, _pages.size(), _foreignPages.size());
}

std::optional<Refusal> Preflight::run()
{
    if (_pages.empty() || _foreignPages.empty())
        return {};
    if (isEncrypted(*_foreign->trailer()))
        return Refusal{Reason::Encrypted,
            "the other document is encrypted, and its content can't be drawn here (Encrypt)"};
    auto reason = spendStreams() ? findReason() : std::nullopt;
    return _budget.isExceeded() ? _budget.refusal() : reason;
}

// Counts what is copied of the contents of foreign pages, each stream once.
bool Preflight::spendStreams()
{
    std::set<const Value*> streams;
    CopyCount count(_foreign);
    if (!_budget.spend(Cost::StoredData, storedSizes(_foreign).inFile))
        return false;
    for (const Ref<PDF::Object>& page : _foreignPages) {
        const auto dictionary = resolveAs<Dictionary>(*_foreign, page->value());
        const Ref<Value> contents = dictionary ? dictionary->find(Keys::contents) : nullptr;
        const Ref<Array> array = valueAs<Array>(contents);
        const std::uint64_t parts = array ? array->size() : contents ? 1 : 0;
        _foreignParts.push_back(parts);
        if (!_budget.spend(Cost::Steps, parts))
            return false;
        for (std::uint64_t i = 0; i < parts; ++i) {
            const auto stream = resolveAs<Stream>(*_foreign, array ? array->get(i) : contents);
            if (stream && streams.insert(stream.get()).second && !_budget.spend(Cost::Copies, count.of(stream)))
                return false;
        }
    }
    return true;
}

// Counts the new contents of a page, which keep the old ones: of a page that is listed many times each time.
bool Preflight::spendContents(const Dictionary& page, std::size_t foreignIndex)
{
    const auto [place, isFirst] = _contents.emplace(&page, 0);
    if (isFirst) {
        const Ref<Value> contents = page.find(Keys::contents);
        const Ref<Array> array = valueAs<Array>(contents);
        place->second = array ? array->size() : 1;
    }
    place->second += _foreignParts[foreignIndex];
    return _budget.spend(Cost::Copies, place->second);
}

std::optional<Refusal> Preflight::findReason()
{
    Result<std::shared_ptr<Resources>> root =
        _forecast.resourcesOf(*_document, *_document->getPageCatalog()->valueAsDictionary());
    if (!root)
        return at("the root of the page tree", root.refusal());
    _rootResources = *root;
    std::optional<Refusal> first;
    for (std::size_t i = 0; i < _pageCount && !_budget.isExceeded() && (!first || _isForced); ++i)
        if (auto refusal = checkPage(i, _pages[i]->valueAsDictionary()); refusal && !first)
            first = at(pageLabel(i), *refusal);
    if (_inheriting.empty() || (first && !_isForced))
        return first;
    auto refusal = checkInheritingPages();
    return first ? first : refusal;
}

std::optional<Refusal> Preflight::checkPage(std::size_t index, const Ref<Dictionary>& page)
{
    const std::size_t foreignIndex = foreignPageBeneath(index, _foreignPages.size());
    const Ref<Dictionary> foreignPage = resolveAs<Dictionary>(*_foreign, _foreignPages[foreignIndex]->value());
    if (!foreignPage)
        return {};
    if (!page)
        return codeRefusal(ErrBadContents);
    if (!spendContents(*page, foreignIndex))
        return _budget.refusal();
    if (page->find(Keys::kids))
        return Refusal{Reason::BrokenRule,
            "this is a branch of the page tree with pages of its own, and its content is not drawn"};
    Result<std::shared_ptr<Resources>> foreign = _forecast.resourcesOf(*_foreign, *foreignPage);
    if (!foreign)
        return at(pageLabel(foreignIndex) + " of the other document", foreign.refusal());
    if (*foreign)
        return merge(index, **foreign, *page);
    _inheriting.push_back(index);
    const Ref<Value> own = page->find(Keys::resources);
    return own && !resolveAs<Dictionary>(*_document, own) ? std::optional(codeRefusal(ErrBadContents)) : std::nullopt;
}

std::optional<Refusal> Preflight::merge(std::size_t index, const Resources& foreign, const Dictionary& page)
{
    Result<std::shared_ptr<Resources>> own = _forecast.madeResourcesOf(page);
    if (!own)
        return own.refusal();
    const bool isInheriting = _rootResources && !page.find(Keys::resources);
    const unsigned spacesBefore = defaultSpacesOf(isInheriting ? *_rootResources : **own);
    std::optional<std::string> collision;
    if (_rootResources)
        collision = _forecast.merge(MergeForecast::Source::RootOfTree, *_rootResources, **own);
    if (!collision || _isForced) {
        auto later = _forecast.merge(MergeForecast::Source::Foreign, foreign, **own);
        collision = collision ? collision : later;
    }
    const unsigned spaces = defaultSpacesOf(**own);
    if (spaces != spacesBefore || spaces != defaultSpacesOf(foreign))
        _recolored.add(index);
    _copyCount += _forecast.hasCopied();
    return collision ? std::optional(conflict(*collision)) : std::nullopt;
}

// What is inherited goes into the root of the page tree, where a page with resources of its own doesn't look.
std::optional<Refusal> Preflight::checkInheritingPages()
{
    Result<std::shared_ptr<Resources>> found =
        _forecast.resourcesOf(*_foreign, *_foreign->getPageCatalog()->valueAsDictionary());
    if (!found)
        return at("the root of the other document's page tree", found.refusal());
    const std::shared_ptr<Resources> inherited = *found ? *found : std::make_shared<Resources>();
    const auto root = _forecast.madeResourcesOf(*_document->getPageCatalog()->valueAsDictionary());
    const unsigned spacesBefore = defaultSpacesOf(**root);
    if (const auto collision = _forecast.merge(MergeForecast::Source::Foreign, *inherited, **root))
        return at(pageLabel(_inheriting.front()), conflict("in the root of the page tree, " + *collision));
    const unsigned spaces = defaultSpacesOf(**root);
    const bool isRecolored = spaces != spacesBefore || spaces != defaultSpacesOf(*inherited);
    for (const std::size_t index : _inheriting) {
        if (isRecolored && !_pages[index]->valueAsDictionary()->find(Keys::resources))
            _recolored.add(index);
        if (auto refusal = checkInheritingPage(index, *inherited))
            return at(pageLabel(index), *refusal);
    }
    return {};
}

// Looks at a page's own resources in place of the inherited ones.
std::optional<Refusal> Preflight::checkInheritingPage(std::size_t index, const Resources& inherited)
{
    const auto own = _forecast.resourcesOf(*_document, *_pages[index]->valueAsDictionary());
    if (!own)
        return own.refusal();
    if (!*own)
        return {};
    if (defaultSpacesOf(**own) != defaultSpacesOf(inherited))
        _recolored.add(index);
    const MergeForecast::Hidden hidden = _forecast.findHidden(inherited, **own);
    if (!hidden.wrong.empty())
        return conflict(hidden.wrong + " is not the one that the page of the other document inherits");
    if (hidden.missing.empty())
        return {};
    _missing = _lacking.count == 0 ? hidden.missing : _missing;
    _lacking.add(index);
    return {};
}

std::vector<std::string> Preflight::warnings() const
{
    std::vector<std::string> warnings;
    if (_lacking.count > 0)
        warnings.push_back(_lacking.label() + " has resources of its own and so won't show " + _missing
            + " and whatever else the page of the other document inherits from its page tree");
    if (_recolored.count > 0)
        warnings.push_back(_recolored.label() + " has different default color spaces from those that its"
            + " content or that of the other document was made for, so colors may change");
    if (_copyCount > 1)
        warnings.push_back("the page of the other document has its own resources, so each of "
            + std::to_string(_copyCount) + " pages gets its own copies of what they refer to");
    return warnings;
}

} // namespace

Result<BackgroundResult> mergeBackground(const Ref<Document>& document, const Ref<Document>& foreign, BackgroundMode mode,
    const BackgroundOptions& options) noexcept
{
    if (!document || !foreign)
        return codeRefusal(ErrNullArgument);
    if (mode > BackgroundMode::PagePairsRepeatLast)
        return codeRefusal(ErrInvalidArgument);
    Preflight preflight(document, foreign, mode, options);
    const auto refusal = preflight.run();
    if (refusal && (!options.isForced || refusal->reason == Reason::LimitReached))
        return *refusal;
    BackgroundResult result{preflight.pageCount(), preflight.warnings()};
    if (refusal)
        result.warnings.push_back(refusal->message);
    if (document->addBackground(foreign, mode))
        return result;
    const std::uint32_t code = Error::get();
    if (refusal)
        return Refusal{refusal->reason, refusal->message, code};
    if (code == foreignCode(ErrBadPages))
        return Refusal{Reason::BrokenRule, std::string(errorWords(ErrBadPages)) + ", in the other document", code};
    // Collisions were found before, and this is what is left.
    if (code == ErrNoResource)
        return Refusal{Reason::BrokenRule,
            "resources can't be copied: a reference in them leads nowhere or back to itself, data can't be"
            " read, or the Contents of a page are neither a reference nor an array", code};
    return codeRefusal(code);
}

} // namespace Host
