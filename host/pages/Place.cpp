#include <host/pages/Place.h>

#include <host/base/ErrorWords.h>
#include <host/losses/PartialMarks.h>
#include <host/pages/AnnotationCopies.h>
#include <host/pages/Drawing.h>
#include <host/pages/FormXObject.h>
#include <host/pages/OptionalContent.h>
#include <host/pages/PageRange.h>

#include <algorithm>
#include <unordered_set>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

std::string pageLabel(std::size_t index)
{
    return "page " + std::to_string(index + 1);
}

// From the coordinates of a page to those in which a viewer shows a box of it: points, from its lower left corner.
Matrix viewOf(const Rectangle& box, int rotation, double userUnit)
{
    const Matrix turned = Matrix::moving(-box.left, -box.bottom).then(Matrix::turning(rotation));
    const Rectangle shown = turned.applied(box);
    return turned.then(Matrix::moving(-shown.left, -shown.bottom)).then(Matrix::scaling(userUnit));
}

// How much of the room that is left goes before what is placed, from the left and from below.
std::pair<double, double> shareOf(Anchor anchor)
{
    switch (anchor) {
    case Anchor::Center: return {0.5, 0.5};
    case Anchor::LowerLeft: return {0, 0};
    case Anchor::LowerRight: return {1, 0};
    case Anchor::UpperLeft: return {0, 1};
    case Anchor::UpperRight: return {1, 1};
    case Anchor::Left: return {0, 0.5};
    case Anchor::Right: return {1, 0.5};
    case Anchor::Bottom: return {0.5, 0};
    case Anchor::Top: return {0.5, 1};
    }
    return {0, 0};
}

double factorOf(Fit fit, const Rectangle& room, const Rectangle& shown)
{
    const double fitting = std::min(room.width() / shown.width(), room.height() / shown.height());
    return fit == Fit::None ? 1 : fit == Fit::Shrink ? std::min(fitting, 1.0) : fitting;
}

// From the coordinates of the foreign page to those of the page.
Matrix matrixOf(const Page& page, const Page& foreign, const Placement& placement)
{
    const Rectangle& box = page.box(placement.box);
    const Rectangle& foreignBox = foreign.box(placement.foreignBox);
    const Matrix view = viewOf(box, page.rotation, page.userUnit);
    const Matrix foreignView = viewOf(foreignBox, foreign.rotation + placement.rotation, foreign.userUnit);
    const Rectangle room = view.applied(box);
    const Rectangle shown = foreignView.applied(foreignBox);
    const double factor = factorOf(placement.fit, room, shown);
    const auto [shareX, shareY] = shareOf(placement.anchor);
    return foreignView.then(Matrix::scaling(factor))
        .then(Matrix::moving(shareX * (room.width() - factor * shown.width()) + placement.offsetX,
            shareY * (room.height() - factor * shown.height()) + placement.offsetY))
        .then(view.inverse());
}

// Which of `count` foreign pages goes with the page at a place of the list; none for none.
std::optional<std::size_t> partnerOf(Pairing pairing, std::size_t place, std::size_t count)
{
    switch (pairing) {
    case Pairing::FirstPageOnly: return place == 0 ? std::optional<std::size_t>(0) : std::nullopt;
    case Pairing::AllPages: return 0;
    case Pairing::PagePairs: return place < count ? std::optional(place) : std::nullopt;
    case Pairing::PagePairsRepeatLast: return std::min(place, count - 1);
    case Pairing::PagePairsRepeatAll: return place % count;
    }
    return {};
}

// One call of `place`.
class Placing {
public:
    Placing(const Ref<Document>& document, const Ref<Document>& foreign, const Placement& placement)
        : _document(document), _foreign(foreign), _placement(placement), _edit(document),
          _forms(_edit, foreign, placement.limitFactor), _drawing(_edit, _tree, placement.limitFactor), _annotations(_edit, foreign, _forms.copying())
    {
    }

    Result<PlaceResult> run()
    {
        auto refusal = read();
        for (std::size_t i = 0; !refusal && i < _chosen.size(); ++i)
            if (const auto partner = partnerOf(_placement.pairing, i, _foreignChosen.size()))
                refusal = draw(_chosen[i], _foreignChosen[*partner]);
        if (!refusal)
            refusal = _annotations.finish();
        if (!refusal)
            refusal = _drawing.prepare();
        if (refusal)
            return *refusal;
        addOptionalContent(_edit, *_foreign, _forms.copying());
        const std::uint32_t version = _foreign->version();
        if (_result.pageCount > 0 && (!_edit.apply() || !raiseVersion(_document, version)))
            return codeRefusal(Error::get());
        if (_annotations.signatureCount() > 0)
            _result.warnings.push_back("signatures of the other document stay behind");
        _result.warnings.insert(
            _result.warnings.end(), _drawing.warnings().begin(), _drawing.warnings().end());
        return std::move(_result);
    }

private:
    std::optional<Refusal> read();
    std::optional<Refusal> draw(std::size_t index, std::size_t foreignIndex);

    const Ref<Document> _document;
    const Ref<Document> _foreign;
    const Placement& _placement;
    PageTree _tree;
    PageTree _foreignTree;
    std::vector<std::size_t> _chosen;
    std::vector<std::size_t> _foreignChosen;
    Edit _edit;
    FormXObjects _forms;
    Drawing _drawing;
    AnnotationCopies _annotations;
    std::vector<bool> _isDrawnOn; // by the first places of pages
    std::unordered_set<std::size_t> _damaged; // foreign pages
    PlaceResult _result;
};

std::optional<Refusal> Placing::read()
{
    if (_placement.rotation % 90 != 0)
        return Refusal{Reason::WrongArgument, "a page can't be turned by " + std::to_string(_placement.rotation)
                + " degrees, which are no multiple of 90", ErrInvalidArgument};
    if (isEncrypted(*_document->trailer()))
        return Refusal{Reason::Encrypted, "the document is encrypted, and nothing can be drawn on its pages (Encrypt)"};
    if (isEncrypted(*_foreign->trailer()))
        return Refusal{Reason::Encrypted,
            "the other document is encrypted, and its content can't be drawn here (Encrypt)"};
    const auto readOne = [limitFactor = _placement.limitFactor](const Ref<Document>& document, const std::string& range, PageTree& tree,
                             std::vector<std::size_t>& chosen, const char* prefix) -> std::optional<Refusal> {
        auto read = pages(document, limitFactor);
        if (!read)
            return read.refusal().withPrefix(prefix);
        tree = std::move(*read);
        auto named = pagesNamed(range, tree.pages.size());
        if (!named)
            return named.refusal().withPrefix(prefix);
        chosen = std::move(*named);
        return {};
    };
    if (auto refusal = readOne(_document, _placement.pages, _tree, _chosen, ""))
        return refusal;
    if (auto refusal = readOne(_foreign, _placement.from, _foreignTree, _foreignChosen, "the other document: "))
        return refusal;
    _isDrawnOn.resize(_tree.pages.size());
    if (_foreignChosen.empty())
        return Refusal{Reason::BrokenRule, "the other document has no pages to be drawn", ErrForeignPage};
    return {};
}

std::optional<Refusal> Placing::draw(std::size_t index, std::size_t foreignIndex)
{
    const Page& page = _tree.pages[index];
    const Page& foreign = _foreignTree.pages[foreignIndex];
    const std::string foreignLabel = pageLabel(foreignIndex) + " of the other document: ";
    if (!page.box(_placement.box).hasArea())
        return Refusal{Reason::BrokenRule, pageLabel(index) + ": has no area (MediaBox)", ErrBadContents};
    if (!foreign.box(_placement.foreignBox).hasArea())
        return Refusal{Reason::BrokenRule, foreignLabel + "has no area (MediaBox)", ErrForeignPage};
    auto form = _forms.make(foreign, foreignIndex, _placement.foreignBox);
    if (!form)
        return form.refusal().withPrefix(foreignLabel);
    if (form->isDamaged && _damaged.insert(foreignIndex).second)
        _result.warnings.push_back(foreignLabel + "its content is damaged, and was drawn up to there");
    if (_isDrawnOn[page.firstPlace])
        return {}; // listed twice: it is one page all the same
    _isDrawnOn[page.firstPlace] = true;
    const Matrix placed = matrixOf(page, foreign, _placement);
    _drawing.add(index, form->reference, form->matrix.inverse().then(placed), _placement.layer);
    ++_result.pageCount;
    return _placement.hasAnnotations ? _annotations.copy(page, foreign, placed) : std::nullopt;
}

} // namespace

Result<PlaceResult> place(
    const Ref<Document>& document, const Ref<Document>& foreign, const Placement& placement) noexcept
{
    if (!document || !foreign)
        return codeRefusal(ErrNullArgument);
    return Placing(document, foreign, placement).run();
}

} // namespace Host
