#include <host/fonts/StandardFonts.h>

#include <host/fonts/FontValues.h>
#include <host/fonts/data/StandardFontData.h>
#include <values/Name.h>

#include <algorithm>

namespace Host {

namespace {

constexpr double courierWidth = 600;

// By which the resources of forms call them, in the order of the fonts.
constexpr std::string_view shortNames[] = {
    "Cour", "CoBo", "CoOb", "CoBO", "Helv", "HeBo", "HeOb", "HeBO", "TiRo", "TiBo", "TiIt", "TiBI", "Symb", "ZaDb"};

// The row of a table that ascends by its names; null when there is none.
template <class Row, std::size_t Count>
const Row* findRow(const Row (&rows)[Count], std::string_view name)
{
    const auto found = std::lower_bound(std::begin(rows), std::end(rows), name,
        [](const Row& row, std::string_view wanted) { return std::string_view(row.name) < wanted; });
    return found != std::end(rows) && found->name == name ? found : nullptr;
}

bool skip(std::string_view& text, std::string_view start)
{
    const bool isThere = text.starts_with(start);
    if (isThere)
        text.remove_prefix(start.size());
    return isThere;
}

GlyphBox boxOf(const std::int16_t (&box)[4])
{
    return {double(box[0]), double(box[1]), double(box[2]), double(box[3])};
}

} // namespace

// In the order of the table of their heights.
constexpr StandardFont StandardFont::fonts[14] = {
    {Family::Courier, false, false}, {Family::Courier, true, false},
    {Family::Courier, false, true}, {Family::Courier, true, true},
    {Family::Helvetica, false, false}, {Family::Helvetica, true, false},
    {Family::Helvetica, false, true}, {Family::Helvetica, true, true},
    {Family::Times, false, false}, {Family::Times, true, false},
    {Family::Times, false, true}, {Family::Times, true, true},
    {Family::Symbol, false, false}, {Family::ZapfDingbats, false, false},
};

const StandardFont* StandardFont::find(std::string_view name) noexcept
{
    name = withoutTag(name);
    for (const StandardFont& font : fonts)
        if (name == font.name() || name == shortNames[font.index()])
            return &font;
    return findStyle(name);
}

// A name of a family, and of styles after it: "TimesNewRomanPS-BoldItalicMT".
const StandardFont* StandardFont::findStyle(std::string_view name) noexcept
{
    constexpr std::pair<std::string_view, Family> families[] = {
        {"Arial", Family::Helvetica}, {"Helvetica", Family::Helvetica}, {"CourierNew", Family::Courier},
        {"Courier", Family::Courier}, {"TimesNewRoman", Family::Times}, {"Times", Family::Times},
        {"Symbol", Family::Symbol}};
    std::string joined(name);
    std::erase(joined, ' ');
    std::string_view style = joined;
    const auto family = std::find_if(std::begin(families), std::end(families),
        [&style](const auto& entry) { return skip(style, entry.first); });
    if (family == std::end(families))
        return nullptr;
    bool isBold = false, isSlanted = false;
    while (!style.empty()) {
        if (skip(style, "Bold"))
            isBold = true;
        else if (skip(style, "Italic") || skip(style, "Oblique"))
            isSlanted = true;
        else if (!skip(style, "-") && !skip(style, ",") && !skip(style, "PS") && !skip(style, "MT")
            && !skip(style, "Regular"))
            return nullptr;
    }
    const bool hasStyles = family->second != Family::Symbol;
    return std::find_if(std::begin(fonts), std::end(fonts), [&](const StandardFont& font) {
        return font._family == family->second && font._isBold == (isBold && hasStyles)
            && font._isSlanted == (isSlanted && hasStyles);
    });
}

std::size_t StandardFont::index() const noexcept
{
    return static_cast<std::size_t>(this - fonts);
}

std::string_view StandardFont::name() const noexcept
{
    return FontData::fontHeights[index()].font;
}

FontHeights StandardFont::heights() const noexcept
{
    const FontData::FontHeight& row = FontData::fontHeights[index()];
    FontHeights heights{double(row.ascender), double(row.descender), double(row.capHeight), double(row.xHeight),
        boxOf(row.box)};
    if (row.ascender == 0) { // the fonts of symbols have the box alone
        heights.ascent = heights.box.top;
        heights.descent = heights.box.bottom;
    }
    return heights;
}

BaseEncoding StandardFont::encoding() const noexcept
{
    if (_family == Family::Symbol)
        return BaseEncoding::Symbol;
    return _family == Family::ZapfDingbats ? BaseEncoding::ZapfDingbats : BaseEncoding::Standard;
}

std::optional<double> StandardFont::width(std::string_view glyph) const noexcept
{
    if (_family == Family::Symbol) {
        const auto* row = findRow(FontData::symbolGlyphs, glyph);
        return row ? std::optional<double>(row->width) : std::nullopt;
    }
    if (_family == Family::ZapfDingbats) {
        const auto* row = findRow(FontData::dingbatGlyphs, glyph);
        return row ? std::optional<double>(row->width) : std::nullopt;
    }
    const auto* row = findRow(FontData::latinGlyphs, glyph);
    if (!row)
        return {};
    if (_family == Family::Courier)
        return courierWidth;
    const std::size_t column = _family == Family::Helvetica ? _isBold : 2u + _isBold + 2u * _isSlanted;
    return row->widths[column];
}

std::optional<GlyphBox> StandardFont::box(std::string_view glyph) const noexcept
{
    const auto* row = _family == Family::ZapfDingbats ? findRow(FontData::dingbatGlyphs, glyph) : nullptr;
    return row ? std::optional<GlyphBox>(boxOf(row->box)) : std::nullopt;
}

Ref<PDF::Dictionary> StandardFont::dictionary() const noexcept
{
    Ref<PDF::Dictionary> dictionary = PDF::Dictionary::create();
    const auto set = [&dictionary](const char* key, std::string_view value) {
        dictionary->set(::String::create(key), PDF::Name::create(::String::create(value.data(), 0, value.size())));
    };
    set("Type", "Font");
    set("Subtype", "Type1");
    set("BaseFont", name());
    if (encoding() == BaseEncoding::Standard)
        set("Encoding", "WinAnsiEncoding");
    return dictionary;
}

} // namespace Host
