#pragma once

#include <cstdio>
#include <string>

namespace Drawn {

// Numbers with blanks between them, as they stand in a file.
template <class... Numbers>
std::string numbers(Numbers... values)
{
    std::string text;
    const auto add = [&text](double value) {
        char one[32];
        std::snprintf(one, sizeof one, "%s%g", text.empty() ? "" : " ", value);
        text += one;
    };
    (add(values), ...);
    return text;
}

struct Color {
    double red, green, blue;
};
inline std::string numbersOf(const Color& color)
{
    return numbers(color.red, color.green, color.blue);
}

// The content of a page or of an appearance. Lengths are in points, the origin is bottom left; the graphics
// state is afterwards as it was before.
class Drawing {
public:
    Drawing& color(const Color& color)
    {
        return put(numbersOf(color) + " rg " + numbersOf(color) + " RG");
    }
    Drawing& width(double points) { return put(numbers(points) + " w"); }
    Drawing& bar(double x, double y, double width, double height)
    {
        return put(numbers(x, y, width, height) + " re f");
    }
    Drawing& frame(double x, double y, double width, double height)
    {
        return put(numbers(x, y, width, height) + " re S");
    }
    Drawing& line(double x, double y, double toX, double toY)
    {
        return put(numbers(x, y) + " m " + numbers(toX, toY) + " l S");
    }
    enum class Ring { Filled, Drawn };
    Drawing& circle(double x, double y, double radius, Ring ring)
    {
        const double bend = 0.5523 * radius; // where a curve is nearest to a quarter of the circle
        put(numbers(x + radius, y) + " m");
        put(numbers(x + radius, y + bend, x + bend, y + radius, x, y + radius) + " c");
        put(numbers(x - bend, y + radius, x - radius, y + bend, x - radius, y) + " c");
        put(numbers(x - radius, y - bend, x - bend, y - radius, x, y - radius) + " c");
        put(numbers(x + bend, y - radius, x + radius, y - bend, x + radius, y) + " c");
        return put(ring == Ring::Filled ? "f" : "s");
    }
    // Text of the font named `font`; parentheses in it have to be in pairs.
    Drawing& text(const std::string& font, double size, double x, double y, const std::string& text)
    {
        return put("BT /" + font + " " + numbers(size) + " Tf " + numbers(x, y) + " Td (" + text + ") Tj ET");
    }
    Drawing& put(const std::string& operators)
    {
        _content += operators + "\n";
        return *this;
    }
    std::string content() const { return "q\n" + _content + "Q"; }

private:
    std::string _content;
};

} // namespace Drawn
