#pragma once

#include <document/Document.h>
#include <host/fields/ContentText.h>
#include <values/Dictionary.h>

#include <optional>
#include <string>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// How a widget looks besides its contents: `Rect`, `MK`, `BS` and `Border`. Lengths are in points.
struct WidgetLook {
    enum class Border { Solid, Dashed, Beveled, Inset, Underlined };

    double width = 0, height = 0;                // as it is read, turned by `rotation`
    int rotation = 0;                            // counterclockwise: 0, 90, 180 or 270 degrees
    bool hasOddRotation = false;                 // the widget has another one, which is left out
    std::vector<double> borderColor, background; // 1, 3 or 4 components; none for transparent
    double borderWidth = 1;
    Border border = Border::Solid;
    std::vector<double> dashes;

    // Absent for a widget without a rectangle or with one without area, in which nothing can be drawn.
    static std::optional<WidgetLook> read(const PDF::Document& document, const PDF::Dictionary& widget) noexcept;

    // How far from the edges the contents are cut off; text is twice as far away from the left and right.
    double inset() const noexcept;
    // The matrix of the appearance, which turns it into the rectangle: six numbers.
    std::vector<double> matrix() const noexcept;
    // Background and border of a rectangle.
    void draw(ContentText& content) const noexcept;
    // The same of a circle, as radio buttons have it.
    void drawRound(ContentText& content) const noexcept;
};

// Sets a color, such as `WidgetLook` has it; nothing for none.
void setFillColor(ContentText& content, const std::vector<double>& color) noexcept;
void setStrokeColor(ContentText& content, const std::vector<double>& color) noexcept;
// The path of a circle.
void addCircle(ContentText& content, double x, double y, double radius) noexcept;

} // namespace Host
