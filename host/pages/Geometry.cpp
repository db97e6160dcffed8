#include <host/pages/Geometry.h>

#include <host/base/Following.h>
#include <values/Array.h>
#include <values/Exact.h>
#include <values/Number.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Host {

using namespace Libraries::Files::PDF;

Matrix Matrix::turning(int degrees) noexcept
{
    switch (((degrees % 360) + 360) % 360) {
    case 90: return {0, -1, 1, 0, 0, 0};
    case 180: return {-1, 0, 0, -1, 0, 0};
    case 270: return {0, 1, -1, 0, 0, 0};
    default: return {};
    }
}

Matrix Matrix::then(const Matrix& next) const noexcept
{
    return {a * next.a + b * next.c, a * next.b + b * next.d, c * next.a + d * next.c, c * next.b + d * next.d,
        e * next.a + f * next.c + next.e, e * next.b + f * next.d + next.f};
}

Matrix Matrix::inverse() const noexcept
{
    const double area = a * d - b * c;
    if (area == 0)
        return {};
    return {d / area, -b / area, -c / area, a / area, (c * f - d * e) / area, (b * e - a * f) / area};
}

Rectangle Matrix::applied(const Rectangle& rectangle) const noexcept
{
    const auto [left, right] = std::minmax({a * rectangle.left, a * rectangle.right});
    const auto [left2, right2] = std::minmax({c * rectangle.bottom, c * rectangle.top});
    const auto [bottom, top] = std::minmax({b * rectangle.left, b * rectangle.right});
    const auto [bottom2, top2] = std::minmax({d * rectangle.bottom, d * rectangle.top});
    return {left + left2 + e, bottom + bottom2 + f, right + right2 + e, top + top2 + f};
}

std::optional<double> numberOf(const Ref<Value>& value) noexcept
{
    const Ref<Number> held = valueAs<Number>(value);
    const double number = held ? exactDouble(*held) : std::nan("");
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<int> degreesOf(const Ref<Value>& value) noexcept
{
    const auto number = numberOf(value);
    if (!number || std::fabs(*number) > 1e9 || *number != std::floor(*number))
        return {};
    const int degrees = int(std::fmod(*number, 360));
    return degrees < 0 ? degrees + 360 : degrees;
}

std::optional<Rectangle> rectangleOf(const Document& document, const Ref<Value>& value) noexcept
{
    const Ref<Array> corners = followAs<Array>(document, value);
    if (!corners || corners->size() != 4)
        return {};
    constexpr double farEnough = 1e9; // beyond any sheet, and still a whole number of the library's
    double numbers[4];
    for (std::size_t i = 0; i < 4; ++i) {
        const auto number = numberOf(followAll(document, corners->get(i)));
        if (!number || std::fabs(*number) > farEnough)
            return {};
        numbers[i] = *number;
    }
    const auto [left, right] = std::minmax(numbers[0], numbers[2]);
    const auto [bottom, top] = std::minmax(numbers[1], numbers[3]);
    return Rectangle{left, bottom, right, top};
}

std::string decimalText(double number, int digitsAfterPoint)
{
    char digits[400];
    const auto end = std::to_chars(digits, std::end(digits), number, std::chars_format::fixed, digitsAfterPoint).ptr;
    std::string text(digits, end);
    if (text.find('.') != text.npos)
        text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string matrixText(const Matrix& matrix)
{
    constexpr int most = 14; // digits, beyond which there is nothing but the noise of calculations
    std::string text;
    for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
        int digits = 8;
        for (double rest = std::fabs(number); rest < 0.1 && digits < most; rest *= 10)
            ++digits;
        text += (text.empty() ? "" : " ") + decimalText(number, digits);
    }
    return text;
}

} // namespace Host
