#include <host/fields/TextLayout.h>

#include <algorithm>
#include <numeric>

namespace Host {

namespace {

// The size that fits a line is this part of the height inside the border, for a font with lines 1.156 high; in other
// fonts the lines are as high.
constexpr double partOfHeight = 0.741 * 1156;
constexpr double usualSize = 12, leastSize = 4; // of several lines, and of what is made to fit
constexpr int sizeSteps = 6;                    // by which the size of several lines is found

// How much of the free room is before a line.
double shareBefore(TextStyle::Align align)
{
    return align == TextStyle::Align::Left ? 0 : align == TextStyle::Align::Center ? 0.5 : 1;
}

// A part of a text: a line, or a paragraph.
struct Line {
    std::size_t begin = 0, end = 0;
    double width = 0; // in 1/1000 of the size, without blanks at the end
    bool isRightToLeft = false;
};

bool isIdeograph(char32_t c)
{
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFF00 && c <= 0xFFEF)
        || (c >= 0x20000 && c <= 0x3FFFF);
}

// Whether a line may end after the character.
bool endsWord(std::u32string_view text, std::size_t index)
{
    const char32_t c = text[index];
    return c == ' ' || c == 0x200B || c == 0x3000 || isIdeograph(c)
        || (index + 1 < text.size() && isIdeograph(text[index + 1]));
}

// A text with the widths of its characters, measured once, and broken into lines of any width.
class MeasuredText {
public:
    MeasuredText(std::u32string_view text, const Lettering& lettering) : _text(text)
    {
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(U'\n', begin), text.size());
            const std::u32string_view paragraph = text.substr(begin, end - begin);
            _paragraphs.push_back({begin, end, 0, lettering.isRightToLeft(paragraph)});
            const std::vector<double> widths = lettering.widths(paragraph);
            _widths.insert(_widths.end(), widths.begin(), widths.end());
            _widths.push_back(0); // of the line break
            begin = end + 1;
        }
    }

    // Lines of up to `width`, or as many as are needed to have more than `most`.
    std::vector<Line> lines(double width, std::size_t most) const
    {
        std::vector<Line> lines;
        for (const Line& paragraph : _paragraphs) {
            std::size_t begin = paragraph.begin;
            do {
                lines.push_back(lineFrom(begin, paragraph, width));
                begin = lines.back().end;
            } while (begin < paragraph.end && lines.size() <= most);
            if (lines.size() > most)
                break;
        }
        return lines;
    }
    Line whole() const { return withoutBlanks({0, _text.size(), 0, _paragraphs.front().isRightToLeft}); }

private:
    Line lineFrom(std::size_t begin, const Line& paragraph, double width) const
    {
        std::size_t wordEnd = begin; // where the line could end
        double taken = 0;
        for (std::size_t i = begin; i < paragraph.end; ++i) {
            taken += _widths[i];
            const bool isTooWide = taken > width && _text[i] != ' ' && i != begin && _widths[i] > 0;
            if (isTooWide)
                return withoutBlanks({begin, wordEnd != begin ? wordEnd : i, 0, paragraph.isRightToLeft});
            if (endsWord(_text, i))
                wordEnd = i + 1;
        }
        return withoutBlanks({begin, paragraph.end, 0, paragraph.isRightToLeft});
    }
    Line withoutBlanks(Line line) const
    {
        std::size_t end = line.end;
        while (end > line.begin && _text[end - 1] == ' ')
            --end;
        line.width = std::accumulate(
            _widths.begin() + std::ptrdiff_t(line.begin), _widths.begin() + std::ptrdiff_t(end), 0.0);
        return line;
    }

    std::u32string_view _text;
    std::vector<Line> _paragraphs;
    std::vector<double> _widths;
};

// Lays out one text.
class Layout {
public:
    Layout(const TextStyle& style, const WidgetLook& look, const Lettering& lettering, ContentText& content,
        AppearanceFonts& fonts)
        : _style(style), _look(look), _lettering(lettering), _content(content), _fonts(fonts)
    {
    }

    void showLine(std::u32string_view text)
    {
        const MeasuredText measured(text, _lettering);
        const Line line = measured.whole();
        double size = _style.size;
        if (size == 0) {
            size = sizeOfHeight();
            if (line.width > 0)
                size = std::max(std::min(size, innerWidth() * 1000 / line.width), std::min(size, leastSize));
        }
        show(text, {line}, size, middle(size));
    }

    void showParagraphs(std::u32string_view text)
    {
        const MeasuredText measured(text, _lettering);
        const double size = _style.size != 0 ? _style.size : sizeOfLines(measured);
        const double top = _look.height - 2 * _look.inset();
        show(text, measured.lines(innerWidth() * 1000 / size, text.size() + 1), size, top - lineHeight(size));
    }

    void showComb(std::u32string_view text)
    {
        const std::vector<double> widths = _lettering.widths(text);
        const double cell = _look.width / double(_style.cells);
        const double widest = widths.empty() ? 0 : *std::max_element(widths.begin(), widths.end());
        double size = _style.size;
        if (size == 0)
            size = widest > 0 ? std::min(sizeOfHeight(), cell * 1000 / widest) : sizeOfHeight();
        const auto free = std::max<std::int64_t>(0, _style.cells - std::int64_t(text.size()));
        const auto first = static_cast<std::int64_t>(double(free) * shareBefore(_style.align));
        Place place(_content);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const double left = cell * (double(first) + double(i)) + (cell - widths[i] * size / 1000) / 2;
            place.move(left, middle(size));
            _lettering.show(text.substr(i, 1), false, size, _content, _fonts);
        }
    }

    double lineHeight(double size) const { return _lettering.heights().height() * size / 1000; }
    double innerWidth() const { return std::max(_look.width - 4 * _look.inset(), 0.01); }

private:
    // Where the next line begins, told relative to the one before.
    class Place {
    public:
        explicit Place(ContentText& content) : _content(content) {}
        void move(double x, double y)
        {
            _content.add({x - _x, y - _y}, "Td");
            _x = x;
            _y = y;
        }

    private:
        ContentText& _content;
        double _x = 0, _y = 0;
    };

    double sizeOfHeight() const
    {
        return std::max(_look.height - 2 * _look.inset(), 0.01) * partOfHeight / _lettering.heights().height();
    }
    // The baseline of a line that is in the middle.
    double middle(double size) const
    {
        const LineHeights heights = _lettering.heights();
        return (_look.height - (heights.ascent + heights.descent) * size / 1000) / 2;
    }

    // The largest of some sizes at which all lines have room.
    double sizeOfLines(const MeasuredText& measured) const
    {
        const double height = _look.height - 4 * _look.inset();
        double fitting = leastSize, tooLarge = usualSize;
        double tried = usualSize;
        for (int step = 0; step < sizeSteps; ++step, tried = (fitting + tooLarge) / 2) {
            const auto room = static_cast<std::size_t>(std::max(height / lineHeight(tried), 1.0));
            if (measured.lines(innerWidth() * 1000 / tried, room).size() <= room) {
                fitting = tried;
                if (step == 0)
                    break;
            } else {
                tooLarge = tried;
            }
        }
        return fitting;
    }

    void show(std::u32string_view text, const std::vector<Line>& lines, double size, double baseline)
    {
        Place place(_content);
        for (const Line& line : lines) {
            const double free = std::max(innerWidth() - line.width * size / 1000, 0.0);
            const double left = 2 * _look.inset() + free * shareBefore(_style.align);
            if (line.end > line.begin) {
                place.move(left, baseline);
                std::u32string_view shown = text.substr(line.begin, line.end - line.begin);
                while (line.isRightToLeft && shown.ends_with(U' '))
                    shown.remove_suffix(1);
                _lettering.show(shown, line.isRightToLeft, size, _content, _fonts);
            }
            baseline -= lineHeight(size);
        }
    }

    const TextStyle& _style;
    const WidgetLook& _look;
    const Lettering& _lettering;
    ContentText& _content;
    AppearanceFonts& _fonts;
};

double sizeOfChoices(const TextStyle& style)
{
    return style.size != 0 ? style.size : usualSize;
}

} // namespace

void showText(const std::u32string& text, const TextStyle& style, const std::string& color, const WidgetLook& look,
    const Lettering& lettering, ContentText& content, AppearanceFonts& fonts) noexcept
{
    Layout layout(style, look, lettering, content, fonts);
    content.add("BT").add(color);
    if (style.kind == TextStyle::Kind::Multiline)
        layout.showParagraphs(text);
    else if (style.kind == TextStyle::Kind::Comb && style.cells > 0)
        layout.showComb(text);
    else
        layout.showLine(text);
    content.add("ET");
}

std::size_t countOfChoices(const TextStyle& style, const WidgetLook& look, const Lettering& lettering) noexcept
{
    const double line = lettering.heights().height() * sizeOfChoices(style) / 1000;
    return static_cast<std::size_t>(std::clamp((look.height - 2 * look.inset()) / line, 1.0, 10000.0));
}

void showChoices(const std::vector<ShownChoice>& choices, const TextStyle& style, const std::string& color,
    const WidgetLook& look, const Lettering& lettering, ContentText& content, AppearanceFonts& fonts) noexcept
{
    const double size = sizeOfChoices(style);
    const double line = lettering.heights().height() * size / 1000;
    const double inset = look.inset(), top = look.height - inset;
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (choices[i].isChosen) {
            content.add("0.6 0.75686 0.8549 rg");
            content.add({inset, top - line * double(i + 1), look.width - 2 * inset, line}, "re").add("f");
        }
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const std::vector<double> widths = lettering.widths(choices[i].text);
        const double width = std::accumulate(widths.begin(), widths.end(), 0.0) * size / 1000;
        const double free = std::max(look.width - 4 * inset - width, 0.0);
        const double baseline = top - line * double(i + 1) - lettering.heights().descent * size / 1000;
        content.add("BT").add(color);
        content.add({2 * inset + free * shareBefore(style.align), baseline}, "Td");
        lettering.show(choices[i].text, lettering.isRightToLeft(choices[i].text), size, content, fonts);
        content.add("ET");
    }
}

} // namespace Host
