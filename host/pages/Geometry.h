#pragma once

#include <document/Document.h>
#include <host/pages/Rectangle.h>

#include <optional>
#include <string>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A transformation as the format writes it: x' = a x + c y + e, y' = b x + d y + f.
struct Matrix {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    static Matrix moving(double x, double y) noexcept { return {1, 0, 0, 1, x, y}; }
    static Matrix scaling(double factor) noexcept { return {factor, 0, 0, factor, 0, 0}; }
    // Clockwise, as pages are turned, by a multiple of 90 degrees.
    static Matrix turning(int degrees) noexcept;

    // This one first, then the other.
    Matrix then(const Matrix& next) const noexcept;
    // Which takes back what this one does; the identity where that can't be.
    Matrix inverse() const noexcept;
    // What encloses the rectangle afterwards.
    Rectangle applied(const Rectangle& rectangle) const noexcept;
    bool operator==(const Matrix&) const noexcept = default;
};

// A number of a file; none for a value of another kind, null included, and for what is no decimal number.
std::optional<double> numberOf(const Ref<PDF::Value>& value) noexcept;
// A whole number as degrees from 0 to 359; none for any other.
std::optional<int> degreesOf(const Ref<PDF::Value>& value) noexcept;
// Four numbers as a rectangle, whatever the order of its corners; none when they aren't four, not numbers, or beyond
// 1,000,000,000.
std::optional<Rectangle> rectangleOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept;

// A number as files have it: in decimal digits, with no more after the point than that.
std::string decimalText(double number, int digitsAfterPoint = 6);
// The operands of `cm`: "1 0 0 1 10 20". Five digits after the point place a corner of a sheet of 14 inches to a
// hundredth of a point; smaller numbers, which shrink larger things, have five digits that count.
std::string matrixText(const Matrix& matrix);

} // namespace Host
