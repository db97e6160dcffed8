#include <host/Background.h>

#include <document/Keys.h>
#include <host/ErrorWords.h>
#include <host/MergeForecast.h>
#include <values/Dictionary.h>
#include <values/Object.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// What `addBackground` adds to the code of a foreign page list.
constexpr std::uint32_t foreignCodes = 0x100;

Refusal at(const std::string& place, const Refusal& refusal)
{
    return {place + ": " + refusal.words, refusal.code};
}

std::string pageWords(std::size_t index)
{
    return "page " + std::to_string(index + 1);
}

// Goes through the stages of `addBackground` beforehand. What fails in the reading half is left to it, since
// it changes nothing then.
class Look {
public:
    Look(const Ref<Document>& document, const Ref<Document>& foreign, BackgroundMode mode);

    // The first reason to refuse.
    std::optional<Refusal> run();
    std::size_t pageCount() const { return _pageCount; }
    std::vector<std::string> warnings() const;

private:
    std::size_t foreignIndex(std::size_t page) const { return std::min(page, _foreignPages.size() - 1); }
    std::optional<Refusal> lookAtPage(std::size_t index, const Ref<Dictionary>& page);
    std::optional<Refusal> merge(const Resources& foreign, const Dictionary& page);
    std::optional<Refusal> lookAtHeirs();

    const Ref<Document> _document;
    const Ref<Document> _foreign;
    const StackVector<Ref<PDF::Object>> _pages;
    StackVector<Ref<PDF::Object>> _foreignPages; // those that are used
    std::size_t _pageCount = 0;                  // that get a background
    MergeForecast _forecast;
    std::shared_ptr<Resources> _rootResources;
    std::vector<std::size_t> _heirs;   // pages beneath which a foreign one goes that inherits its resources
    std::vector<std::size_t> _lacking; // those among them that don't see all of these
    std::string _missing;              // what the first of them doesn't see
    std::size_t _copyCount = 0;        // pages that get copies of their own
};

Look::Look(const Ref<Document>& document, const Ref<Document>& foreign, BackgroundMode mode)
    : _document(document), _foreign(foreign), _pages(document->getPages()), _foreignPages(foreign->getPages()),
      _pageCount(_pages.size()), _forecast(document, foreign)
{
    const bool isFirstOnly = mode == BackgroundMode::FirstPageOnly || mode == BackgroundMode::AllPages;
    if (isFirstOnly && !_foreignPages.empty())
        _foreignPages.resize(1);
    if (mode == BackgroundMode::FirstPageOnly || mode == BackgroundMode::PagePairs)
        _pageCount = std::min(_pageCount, _foreignPages.size());
}

std::optional<Refusal> Look::run()
{
    if (_pages.empty() || _foreignPages.empty())
        return {};
    Result<std::shared_ptr<Resources>> root =
        _forecast.resourcesOf(*_document, *_document->getPageCatalog()->valueAsDictionary());
    if (!root)
        return at("the root of the page tree", root.refusal());
    _rootResources = *root;
    for (std::size_t i = 0; i < _pageCount; ++i)
        if (auto refusal = lookAtPage(i, _pages[i]->valueAsDictionary()))
            return at(pageWords(i), *refusal);
    return _heirs.empty() ? std::nullopt : lookAtHeirs();
}

std::optional<Refusal> Look::lookAtPage(std::size_t index, const Ref<Dictionary>& page)
{
    const Ref<Dictionary> foreignPage = _foreign->valueAsDict(_foreignPages[foreignIndex(index)]->value());
    if (!foreignPage)
        return {};
    if (!page)
        return codeRefusal(ErrBadContents);
    if (page->find(Keys::kids))
        return Refusal{"this is a branch of the page tree with pages of its own, and its content is not drawn"};
    Result<std::shared_ptr<Resources>> foreign = _forecast.resourcesOf(*_foreign, *foreignPage);
    if (!foreign)
        return at(pageWords(foreignIndex(index)) + " of the other document", foreign.refusal());
    if (*foreign)
        return merge(**foreign, *page);
    _heirs.push_back(index);
    return {};
}

std::optional<Refusal> Look::merge(const Resources& foreign, const Dictionary& page)
{
    Result<std::shared_ptr<Resources>> own = _forecast.madeResourcesOf(page);
    if (!own)
        return own.refusal();
    std::optional<std::string> trouble;
    if (_rootResources)
        trouble = _forecast.merge(MergeForecast::Source::RootOfTree, *_rootResources, **own);
    if (!trouble)
        trouble = _forecast.merge(MergeForecast::Source::Foreign, foreign, **own);
    _copyCount += _forecast.hasCopied();
    return trouble ? std::optional(Refusal{*trouble}) : std::nullopt;
}

// What is inherited goes into the root of the page tree, where a page with resources of its own doesn't look.
std::optional<Refusal> Look::lookAtHeirs()
{
    Result<std::shared_ptr<Resources>> inherited =
        _forecast.resourcesOf(*_foreign, *_foreign->getPageCatalog()->valueAsDictionary());
    if (!inherited)
        return at("the root of the other document's page tree", inherited.refusal());
    if (!*inherited)
        return {};
    const auto root = _forecast.madeResourcesOf(*_document->getPageCatalog()->valueAsDictionary());
    if (const auto trouble = _forecast.merge(MergeForecast::Source::Foreign, **inherited, **root))
        return Refusal{"the root of the page tree: " + *trouble};
    for (const std::size_t index : _heirs) {
        const auto own = _forecast.resourcesOf(*_document, *_pages[index]->valueAsDictionary());
        if (!own)
            return at(pageWords(index), own.refusal());
        if (!*own)
            continue;
        const MergeForecast::Hidden hidden = _forecast.findHidden(**inherited, **own);
        if (!hidden.wrong.empty())
            return Refusal{pageWords(index) + ": " + hidden.wrong
                + " is another one than that which the page of the other document inherits"};
        if (hidden.missing.empty())
            continue;
        _missing = _lacking.empty() ? hidden.missing : _missing;
        _lacking.push_back(index);
    }
    return {};
}

std::vector<std::string> Look::warnings() const
{
    std::vector<std::string> warnings;
    if (!_lacking.empty())
        warnings.push_back(pageWords(_lacking[0])
            + (_lacking.size() > 1 ? " (and " + std::to_string(_lacking.size() - 1) + " more)" : "")
            + " has resources of its own and so won't show " + _missing
            + ", and what else the page of the other document inherits from its page tree");
    if (_copyCount > 1)
        warnings.push_back("the page of the other document carries its resources itself, and each of "
            + std::to_string(_copyCount) + " pages gets copies of its own of what they refer to");
    return warnings;
}

} // namespace

Result<Underlaid> background(const Ref<Document>& document, const Ref<Document>& foreign, BackgroundMode mode,
    const BackgroundOptions& options) noexcept
{
    if (!document || !foreign)
        return codeRefusal(ErrNullArgument);
    if (mode > BackgroundMode::PagePairsRepeatLast)
        return codeRefusal(ErrInvalidArgument);
    Look look(document, foreign, mode);
    const auto trouble = look.run();
    if (trouble && !options.isForced)
        return *trouble;
    Underlaid result{look.pageCount(), look.warnings()};
    if (trouble)
        result.warnings.push_back(trouble->words);
    if (document->addBackground(foreign, mode))
        return result;
    const std::uint32_t code = Error::get();
    if (trouble)
        return Refusal{trouble->words, code};
    if (code == ErrBadPages + foreignCodes)
        return Refusal{std::string(errorWords(ErrBadPages)) + ", in the other document", code};
    return codeRefusal(code);
}

} // namespace Host
