#pragma once

#include <host/fields/Lettering.h>
#include <host/fields/WidgetLook.h>

#include <vector>

namespace Host {

// How a field lays out its text.
struct TextStyle {
    enum class Kind { OneLine, Multiline, Comb };
    enum class Align { Left, Center, Right };

    Kind kind = Kind::OneLine;
    Align align = Align::Left;
    std::int64_t cells = 0; // of a comb
    double size = 0;        // 0 for the one that fits
};

// Shows a text inside a widget, from the setting of the font on: font, size and color are set by it.
void showText(const std::u32string& text, const TextStyle& style, const std::string& color, const WidgetLook& look,
    const Lettering& lettering, ContentText& content, AppearanceFonts& fonts) noexcept;

// The choices of a list box, from the first one on that it shows.
struct ShownChoice {
    std::u32string text;
    bool isChosen = false;
};
void showChoices(const std::vector<ShownChoice>& choices, const TextStyle& style, const std::string& color,
    const WidgetLook& look, const Lettering& lettering, ContentText& content, AppearanceFonts& fonts) noexcept;
// How many choices have room, one at least.
std::size_t countOfChoices(const TextStyle& style, const WidgetLook& look, const Lettering& lettering) noexcept;

} // namespace Host
