#include <host/fields/WidgetLook.h>

#include <host/fonts/FontValues.h>
#include <platform/ConstantText.h>
#include <platform/Limits.h>

#include <algorithm>

namespace Host {

namespace {

// Keys that each widget is asked for.
constinit const ConstantText styleKey{"BS"}, borderKey{"Border"}, marksKey{"MK"}, rectangleKey{"Rect"};

constexpr double white = 1, gray = 0.5, lightGray = 0.75293;

// An array of numbers of any length up to `most`; empty for all else.
std::vector<double> listAt(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key, std::size_t most)
{
    const Ref<PDF::Array> array = valueAt<PDF::Array>(document, dictionary, key);
    return array && array->size() <= most ? numbersAt(document, dictionary, key, array->size()) : std::vector<double>();
}

std::vector<double> colorAt(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key)
{
    std::vector<double> color = listAt(document, dictionary, key, 4);
    if (color.size() == 2)
        color.clear();
    for (double& component : color)
        component = std::clamp(component, 0.0, 1.0);
    return color;
}

WidgetLook::Border borderOf(const std::string& name)
{
    using Border = WidgetLook::Border;
    return name == "D" ? Border::Dashed
        : name == "B"  ? Border::Beveled
        : name == "I"  ? Border::Inset
        : name == "U"  ? Border::Underlined
                       : Border::Solid;
}

void readBorder(const PDF::Document& document, const PDF::Dictionary& widget, WidgetLook& look)
{
    std::optional<double> width;
    if (const auto style = PDF::resolveEntryAs<PDF::Dictionary>(document, widget, styleKey)) {
        width = numberAt(document, *style, "W");
        look.border = borderOf(nameAt(document, *style, "S"));
        look.dashes = listAt(document, *style, "D", 8);
    } else if (const auto array = PDF::resolveEntryAs<PDF::Array>(document, widget, borderKey);
               array && array->size() >= 3) {
        width = numberOf(document, array->get(2));
    }
    if (look.dashes.empty() || *std::max_element(look.dashes.begin(), look.dashes.end()) <= 0)
        look.dashes = {3};
    look.borderWidth = std::clamp(width.value_or(1), 0.0, std::min(look.width, look.height) / 2);
}

void setColor(ContentText& content, const std::vector<double>& color, const char* const (&operators)[3])
{
    std::string line;
    for (const double component : color)
        line += ContentText::number(component) + " ";
    if (!color.empty())
        content.add(line + operators[color.size() == 1 ? 0 : color.size() == 3 ? 1 : 2]);
}

using Point = std::pair<double, double>;

void fillPolygon(ContentText& content, const std::vector<double>& color, const std::vector<Point>& points)
{
    setFillColor(content, color);
    for (std::size_t i = 0; i < points.size(); ++i)
        content.add({points[i].first, points[i].second}, i == 0 ? "m" : "l");
    content.add("f");
}

// The two edges inside the border that make it look raised or sunk.
void drawEdges(ContentText& content, const WidgetLook& look)
{
    const double b = look.borderWidth, w = look.width, h = look.height;
    const bool isInset = look.border == WidgetLook::Border::Inset;
    fillPolygon(content, {isInset ? gray : white},
        {{b, b}, {b, h - b}, {w - b, h - b}, {w - 2 * b, h - 2 * b}, {2 * b, h - 2 * b}, {2 * b, 2 * b}});
    fillPolygon(content, {isInset ? lightGray : gray},
        {{b, b}, {w - b, b}, {w - b, h - b}, {w - 2 * b, h - 2 * b}, {w - 2 * b, 2 * b}, {2 * b, 2 * b}});
}

void setLine(ContentText& content, const WidgetLook& look)
{
    setStrokeColor(content, look.borderColor);
    if (look.borderWidth != 1)
        content.add({look.borderWidth}, "w");
    if (look.border != WidgetLook::Border::Dashed)
        return;
    std::string dashes = "[";
    for (const double dash : look.dashes)
        dashes += ContentText::number(std::max(dash, 0.0)) + " ";
    content.add(dashes + "] 0 d");
}

} // namespace

std::optional<WidgetLook> WidgetLook::read(const PDF::Document& document, const PDF::Dictionary& widget) noexcept
{
    const auto corners = PDF::resolveEntryAs<PDF::Array>(document, widget, rectangleKey);
    const auto rectangle = corners && corners->size() == 4 ? numbersOf(document, *corners) : std::vector<double>();
    WidgetLook look;
    if (rectangle.empty())
        return {};
    look.width = std::abs(rectangle[2] - rectangle[0]);
    look.height = std::abs(rectangle[3] - rectangle[1]);
    const auto isExtent = [](double extent) { return extent > 0 && extent <= Limits::maxFieldExtent; };
    if (!isExtent(look.width) || !isExtent(look.height))
        return {};
    if (const auto marks = PDF::resolveEntryAs<PDF::Dictionary>(document, widget, marksKey)) {
        const double turn = numberAt(document, *marks, "R").value_or(0);
        look.hasOddRotation = std::fmod(turn, 90) != 0;
        if (!look.hasOddRotation)
            look.rotation = static_cast<int>(std::fmod(std::fmod(turn, 360) + 360, 360));
        look.borderColor = colorAt(document, *marks, "BC");
        look.background = colorAt(document, *marks, "BG");
    }
    if (look.rotation % 180 != 0)
        std::swap(look.width, look.height);
    readBorder(document, widget, look);
    return look;
}

double WidgetLook::inset() const noexcept
{
    const double own = border == Border::Beveled || border == Border::Inset ? 2 * borderWidth : borderWidth;
    return std::min(std::max(own, 1.0), std::min(width, height) / 4);
}

std::vector<double> WidgetLook::matrix() const noexcept
{
    switch (rotation) {
    case 90: return {0, 1, -1, 0, height, 0};
    case 180: return {-1, 0, 0, -1, width, height};
    case 270: return {0, -1, 1, 0, 0, width};
    default: return {1, 0, 0, 1, 0, 0};
    }
}

void WidgetLook::draw(ContentText& content) const noexcept
{
    if (!background.empty()) {
        setFillColor(content, background);
        content.add({0, 0, width, height}, "re").add("f");
    }
    if (borderWidth > 0 && (border == Border::Beveled || border == Border::Inset))
        drawEdges(content, *this);
    if (borderColor.empty() || borderWidth <= 0)
        return;
    setLine(content, *this);
    const double half = borderWidth / 2;
    if (border == Border::Underlined)
        content.add({0, half}, "m").add({width, half}, "l").add("S");
    else
        content.add({half, half, width - borderWidth, height - borderWidth}, "re").add("s");
}

void WidgetLook::drawRound(ContentText& content) const noexcept
{
    const double radius = std::min(width, height) / 2;
    if (!background.empty()) {
        setFillColor(content, background);
        addCircle(content, width / 2, height / 2, radius);
        content.add("f");
    }
    if (borderColor.empty() || borderWidth <= 0)
        return;
    setLine(content, *this);
    addCircle(content, width / 2, height / 2, radius - borderWidth / 2);
    content.add("s");
}

void setFillColor(ContentText& content, const std::vector<double>& color) noexcept
{
    setColor(content, color, {"g", "rg", "k"});
}

void setStrokeColor(ContentText& content, const std::vector<double>& color) noexcept
{
    setColor(content, color, {"G", "RG", "K"});
}

void addCircle(ContentText& content, double x, double y, double radius) noexcept
{
    const double handle = radius * 0.5523; // of a quarter, by which a cubic curve is nearest to the circle
    content.add({x - radius, y}, "m");
    content.add({x - radius, y + handle, x - handle, y + radius, x, y + radius}, "c");
    content.add({x + handle, y + radius, x + radius, y + handle, x + radius, y}, "c");
    content.add({x + radius, y - handle, x + handle, y - radius, x, y - radius}, "c");
    content.add({x - handle, y - radius, x - radius, y - handle, x - radius, y}, "c");
}

} // namespace Host
