#include <host/annotations/Appearance.h>

#include <host/base/Following.h>
#include <host/pages/PageKeys.h>
#include <platform/ConstantText.h>
#include <values/Array.h>
#include <values/Name.h>
#include <values/Number.h>

#include <cmath>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText appearanceKey{"AP"};
constinit const ConstantText flagsKey{"F"};
constinit const ConstantText normalKey{"N"};
constinit const ConstantText rectKey{"Rect"};

enum Flags : std::uint32_t { Hidden = 1 << 1, Print = 1 << 2, NoRotate = 1 << 4, NoView = 1 << 5 };

std::uint32_t flagsOf(const Document& document, const Dictionary& annotation)
{
    const Ref<Number> flags = followEntryAs<Number>(document, annotation, flagsKey);
    return flags ? std::uint32_t(flags->intPart()) : 0;
}

// The identity when it isn't six numbers, as viewers take it.
Matrix ownMatrix(const Document& document, const Dictionary& entries)
{
    const Ref<Array> array = followEntryAs<Array>(document, entries, PageKeys::matrix);
    if (!array || array->size() != 6)
        return {};
    double numbers[6];
    for (std::size_t i = 0; i < 6; ++i) {
        const auto number = numberOf(followAll(document, array->get(i)));
        if (!number)
            return {};
        numbers[i] = *number;
    }
    return {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
}

// Whether a reader takes the numbers of the matrix, and it leaves an area of what has one.
bool isUsable(const Matrix& matrix)
{
    constexpr double most = 1e9;
    constexpr double least = 1e-9; // of which the written matrix has nothing
    for (const double number : {matrix.a, matrix.d, matrix.e, matrix.f})
        if (!(std::fabs(number) < most))
            return false;
    return std::fabs(matrix.a) > least && std::fabs(matrix.d) > least;
}

} // namespace

bool isShownOnScreen(const Document& document, const Dictionary& annotation) noexcept
{
    return (flagsOf(document, annotation) & (Hidden | NoView)) == 0;
}

bool isPrinted(const Document& document, const Dictionary& annotation) noexcept
{
    return (flagsOf(document, annotation) & (Hidden | Print)) == Print;
}

Ref<Value> normalAppearance(const Document& document, const Dictionary& annotation) noexcept
{
    const Ref<Dictionary> appearances = followEntryAs<Dictionary>(document, annotation, appearanceKey);
    Ref<Value> normal = appearances ? appearances->find(normalKey) : nullptr;
    const Ref<Value> held = followAll(document, normal);
    return valueAs<Stream>(held) || valueAs<Dictionary>(held) ? normal : nullptr;
}

std::optional<Appearance> appearanceIn(
    const Document& document, const Ref<Value>& normal, const Ref<::String>& state) noexcept
{
    Appearance appearance{normal, followAs<Stream>(document, normal)};
    const Ref<Dictionary> states = followAs<Dictionary>(document, normal);
    if (!appearance.stream && states && state) {
        appearance.value = states->find(state);
        appearance.stream = followAs<Stream>(document, appearance.value);
    }
    return appearance.stream && appearance.stream->dict() ? std::optional(appearance) : std::nullopt;
}

std::optional<Rectangle> appearanceBox(const Document& document, const Stream& stream) noexcept
{
    const Ref<Dictionary> entries = stream.dict();
    const auto box = rectangleOf(document, entries->find(PageKeys::boundingBox));
    if (!box || !box->hasArea())
        return {};
    const Rectangle shown = ownMatrix(document, *entries).applied(*box);
    return shown.hasArea() ? std::optional(shown) : std::nullopt;
}

std::optional<Matrix> appearanceMatrix(
    const Document& document, const Dictionary& annotation, const Stream& stream, const Page& page) noexcept
{
    const auto rect = rectangleOf(document, annotation.find(rectKey));
    const auto box = appearanceBox(document, stream);
    if (!rect || !box)
        return {};
    const double x = rect->width() / box->width(), y = rect->height() / box->height();
    Matrix matrix{x, 0, 0, y, rect->left - x * box->left, rect->bottom - y * box->bottom};
    if (!isUsable(matrix))
        return {};
    if (flagsOf(document, annotation) & NoRotate)
        matrix = matrix.then(Matrix::moving(-rect->left, -rect->top))
                     .then(Matrix::turning(-page.rotation))
                     .then(Matrix::moving(rect->left, rect->top));
    return matrix;
}

} // namespace Host
