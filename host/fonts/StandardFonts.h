#pragma once

#include <host/fonts/BaseEncodings.h>
#include <values/Dictionary.h>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A rectangle of glyphs, in 1/1000 of the font's size, from the origin of the first glyph.
struct GlyphBox {
    double left = 0, bottom = 0, right = 0, top = 0;
    bool isEmpty() const noexcept { return left >= right || bottom >= top; }
};

// How far glyphs reach above and below the baseline, in 1/1000 of the font's size; what is below is negative.
struct FontHeights {
    double ascent = 0, descent = 0;
    double capHeight = 0, xHeight = 0; // 0 where the font doesn't say
    GlyphBox box;                      // around all glyphs; empty where the font doesn't say
};

// One of the 14 fonts that every reader has, so that documents need not bring them: the metrics that their maker
// published.
class StandardFont {
public:
    // By its name, the short one that forms use for it, such as "HeBo", or a name of a font that readers show by it,
    // such as "ArialMT" and "Arial,Bold"; a tag in front, "ABCDEF+", doesn't matter. Null for any other.
    static const StandardFont* find(std::string_view name) noexcept;

    std::string_view name() const noexcept;
    FontHeights heights() const noexcept;
    // The one that is built in.
    BaseEncoding encoding() const noexcept;
    // In 1/1000 of the font's size; absent when the font has no glyph of this name.
    std::optional<double> width(std::string_view glyph) const noexcept;
    // Around a glyph of ZapfDingbats, by which a mark is centred; absent for all other fonts.
    std::optional<GlyphBox> box(std::string_view glyph) const noexcept;

    // A new dictionary for it, to be put among a document's resources: with WinAnsiEncoding where it has letters.
    Ref<PDF::Dictionary> dictionary() const noexcept;

private:
    enum class Family : std::uint8_t { Courier, Helvetica, Times, Symbol, ZapfDingbats };
    constexpr StandardFont(Family family, bool isBold, bool isSlanted) noexcept
        : _family(family), _isBold(isBold), _isSlanted(isSlanted)
    {
    }
    std::size_t index() const noexcept;
    static const StandardFont* findStyle(std::string_view name) noexcept;

    static const StandardFont fonts[14];
    Family _family;
    bool _isBold, _isSlanted;
};

} // namespace Host
