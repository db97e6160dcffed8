#include <host/fields/Lettering.h>

#include <algorithm>

namespace Host {

namespace {

// "/Helv", whatever bytes the name has.
std::string writtenName(const std::string& name)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text = "/";
    for (const char byte : name)
        if (std::string_view("#/()<>[]{}%").find(byte) == std::string_view::npos && byte > ' ' && byte < 127)
            text += byte;
        else
            text.append({'#', digits[static_cast<unsigned char>(byte) >> 4], digits[byte & 15]});
    return text;
}

std::string bytesOf(std::uint32_t code, std::size_t count)
{
    std::string bytes;
    for (std::size_t i = count; i-- > 0;)
        bytes += static_cast<char>(code >> (8 * i));
    return bytes;
}

// A text as the format has it in marks: UTF-16 with its mark.
std::string markedText(std::u32string_view text)
{
    std::string bytes = "\xFE\xFF";
    for (const char32_t c : text)
        if (c > 0xFFFF)
            bytes += bytesOf(0xD800 + ((c - 0x10000) >> 10), 2) + bytesOf(0xDC00 + (c & 0x3FF), 2);
        else
            bytes += bytesOf(c, 2);
    return ContentText::hexadecimal(bytes);
}

// Strings and the distances between them, as they are shown in one operation.
class Run {
public:
    void move(double distance) { _distance -= distance; }
    void add(std::string_view bytes)
    {
        if (std::abs(_distance) >= 0.5) { // less than anyone sees
            flush();
            _parts += ContentText::number(_distance) + " ";
            _distance = 0;
        }
        _bytes += bytes;
    }
    void show(ContentText& content)
    {
        flush();
        if (std::abs(_distance) >= 0.5)
            _parts += ContentText::number(_distance);
        if (!_parts.empty())
            content.add("[" + _parts + "] TJ");
        _parts.clear();
        _distance = 0;
    }

private:
    void flush()
    {
        if (!_bytes.empty())
            _parts += ContentText::hexadecimal(_bytes);
        _bytes.clear();
    }
    double _distance = 0; // to the left, as the operation counts it
    std::string _bytes, _parts;
};

void setFont(const std::string& name, double size, ContentText& content)
{
    content.add(name + " " + ContentText::number(size) + " Tf");
}

// Shows the glyphs of a line, one beside the other.
class ShapedRun {
public:
    ShapedRun(double size, ContentText& content, AppearanceFonts& fonts) : _size(size), _content(content), _fonts(fonts)
    {
    }
    // What follows, up to `end`, is given back as this text.
    void begin(std::u32string_view text)
    {
        flush();
        _content.add("/Span <</ActualText " + markedText(text) + ">> BDC");
    }
    void end()
    {
        flush();
        _content.add("EMC");
    }
    void add(const TextEngine::Glyph& glyph)
    {
        if (_font != glyph.font || _up != glyph.up)
            flush();
        if (_font != glyph.font)
            setFont(_fonts.add(glyph.font, ""), _size, _content);
        if (_up != glyph.up)
            _content.add({glyph.up * _size / 1000}, "Ts");
        _font = glyph.font;
        _up = glyph.up;
        _run.move(glyph.right);
        _run.add(bytesOf(glyph.id, 2));
        _run.move(glyph.advance - glyph.right - glyph.width);
    }
    void flush() { _run.show(_content); }
    // What comes after the line is on the baseline again.
    void finish()
    {
        flush();
        if (_up != 0)
            _content.add("0 Ts");
    }

private:
    const double _size;
    ContentText& _content;
    AppearanceFonts& _fonts;
    Run _run;
    std::optional<std::uint32_t> _font;
    double _up = 0;
};

struct Block {
    char32_t first, last;
};
// Combining marks, Hebrew to the scripts of South and Southeast Asia, Khmer and Mongolian, Javanese and others, the
// forms of Hebrew and Arabic, and what is beyond the first plane.
constexpr Block shapedBlocks[] = {{0x300, 0x36F}, {0x590, 0x10FF}, {0x1700, 0x1AFF}, {0x1B00, 0x1CFF}, {0x1DC0, 0x1DFF},
    {0x20D0, 0x20FF}, {0xA800, 0xABFF}, {0xFB1D, 0xFDFF}, {0xFE20, 0xFE2F}, {0xFE70, 0xFEFC}, {0x10000, 0x1FFFF}};
constexpr Block invisibleBlocks[] = {{0xAD, 0xAD}, {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F},
    {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0xE0000, 0xE0FFF}};

template <std::size_t Count>
bool isIn(const Block (&blocks)[Count], char32_t c)
{
    return std::any_of(
        std::begin(blocks), std::end(blocks), [c](const Block& block) { return c >= block.first && c <= block.last; });
}

} // namespace

bool isInvisible(char32_t character) noexcept
{
    return isIn(invisibleBlocks, character);
}

bool needsShaping(char32_t character) noexcept
{
    return isIn(shapedBlocks, character);
}

std::string AppearanceFonts::add(const FontSource& source, const std::string& wish) noexcept
{
    for (const Entry& entry : _entries)
        if (entry.source == source)
            return writtenName(entry.name);
    const auto isTaken = [this](const std::string& name) {
        return std::any_of(_entries.begin(), _entries.end(), [&](const Entry& entry) { return entry.name == name; });
    };
    std::string name = wish;
    for (std::size_t i = _entries.size(); name.empty() || isTaken(name); ++i)
        name = "Text" + std::to_string(i);
    _entries.push_back({name, source});
    return writtenName(name);
}

// ---- Fonts with a code for each character

bool PlainLettering::has(char32_t character) const noexcept
{
    return isInvisible(character) || (!needsShaping(character) && find(character).second);
}

std::pair<std::size_t, std::optional<FontCode>> PlainLettering::find(char32_t character) const noexcept
{
    for (std::size_t i = 0; i < _fonts.size(); ++i)
        if (const std::optional<FontCode> code = _fonts[i].font->find(character))
            return {i, code};
    return {0, std::nullopt};
}

std::vector<double> PlainLettering::widths(std::u32string_view paragraph) const noexcept
{
    std::vector<double> widths;
    for (const char32_t character : paragraph) {
        const auto code = isInvisible(character) ? std::nullopt : find(character).second;
        widths.push_back(code ? code->width : 0);
    }
    return widths;
}

void PlainLettering::show(
    std::u32string_view line, bool, double size, ContentText& content, AppearanceFonts& fonts) const noexcept
{
    std::string bytes;
    std::size_t current = _fonts.size(), byteCount = 1;
    const auto flush = [&] {
        if (!bytes.empty())
            content.add((byteCount == 1 ? ContentText::literal(bytes) : ContentText::hexadecimal(bytes)) + " Tj");
        bytes.clear();
    };
    for (const char32_t character : line) {
        const auto [font, code] = find(character);
        if (!code || isInvisible(character))
            continue;
        if (font != current) {
            flush();
            setFont(fonts.add(_fonts[font].source, _fonts[font].name), size, content);
            current = font;
        }
        byteCount = code->byteCount;
        bytes += bytesOf(code->code, byteCount);
    }
    flush();
}

// ---- An engine

LineHeights ShapedLettering::heights() const noexcept
{
    return _heights.height() > 0 ? _heights : LineHeights();
}

std::vector<double> ShapedLettering::widths(std::u32string_view paragraph) const noexcept
{
    std::vector<double> widths(paragraph.size());
    for (const TextEngine::Glyph& glyph : _engine.shape(paragraph, isRightToLeft(paragraph))) {
        if (glyph.first < widths.size())
            widths[glyph.first] += glyph.advance;
        const TextEngine::Font font = _engine.font(glyph.font);
        _heights.ascent = std::max(_heights.ascent, font.ascent);
        _heights.descent = std::min(_heights.descent, font.descent);
    }
    return widths;
}

bool ShapedLettering::isRightToLeft(std::u32string_view paragraph) const noexcept
{
    return _engine.isRightToLeft(paragraph);
}

void ShapedLettering::show(std::u32string_view line, bool isRightToLeft, double size, ContentText& content,
    AppearanceFonts& fonts) const noexcept
{
    const std::vector<TextEngine::Glyph> glyphs = _engine.shape(line, isRightToLeft);
    ShapedRun run(size, content, fonts);
    for (std::size_t begin = 0, end = 0; begin < glyphs.size(); begin = end) {
        const TextEngine::Glyph& first = glyphs[begin];
        for (end = begin + 1; end < glyphs.size() && glyphs[end].count == 0;)
            ++end;
        std::u32string text(first.first < line.size() ? line.substr(first.first, first.count) : std::u32string_view());
        std::erase_if(text, isInvisible);
        // What one glyph always draws is told once for all, and else here.
        const bool isPlain = end == begin + 1 && _texts.claim(first, text);
        if (!isPlain)
            run.begin(text);
        for (std::size_t i = begin; i < end; ++i)
            run.add(glyphs[i]);
        if (!isPlain)
            run.end();
    }
    run.finish();
    fonts.glyphs.insert(fonts.glyphs.end(), glyphs.begin(), glyphs.end());
}

} // namespace Host
