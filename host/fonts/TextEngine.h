#pragma once

#include <host/base/Result.h>
#include <platform/Export.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

// What draws the characters that the fonts of a document don't have, in any script: fonts that are embedded as
// subsets, and how texts become glyphs of them. The library of the folder text/ makes one; an application may have its
// own. It belongs to one thread at a time. All measures are in 1/1000 of the font's size.
class EXPORTED TextEngine {
public:
    // A glyph of a line.
    struct Glyph {
        std::uint32_t font = 0;   // which of the engine's fonts
        std::uint32_t id = 0;     // in that font, as it goes into the document
        std::size_t first = 0;    // the characters of the line that it draws begin here,
        std::size_t count = 0;    // so many; none where another glyph of the same characters has them
        double advance = 0;       // from its place to that of the next glyph
        double width = 0;         // what the font says of the glyph by itself
        double right = 0, up = 0; // how far from its place it is drawn
    };
    struct Font {
        std::string name;       // as PostScript has it
        bool isCompact = false; // the outlines are those of CFF
        bool isFixedPitch = false, isSerif = false, isItalic = false, isBold = false;
        double ascent = 0, descent = 0, capHeight = 0, italicAngle = 0; // what is below the baseline is negative
        std::array<double, 4> box = {};                                 // around all glyphs: left, bottom, right, top
    };

    virtual ~TextEngine() noexcept = default;

    // The characters of the text that no font has, each once.
    virtual std::u32string missing(std::u32string_view text) noexcept = 0;
    // Whether a paragraph runs from right to left, as its first letter does.
    virtual bool isRightToLeft(std::u32string_view paragraph) noexcept = 0;
    // The glyphs of a line without line breaks, from left to right.
    virtual std::vector<Glyph> shape(std::u32string_view line, bool isRightToLeft) noexcept = 0;
    // What is known of a font that a glyph named.
    virtual Font font(std::uint32_t font) noexcept = 0;
    // A font program with these glyphs and all that they need, which keep their ids: TrueType, or the bare CFF. Refused
    // when the font must not be embedded, or none can be made.
    virtual Result<std::string> subset(std::uint32_t font, const std::vector<std::uint32_t>& ids) noexcept = 0;
};

} // namespace Host
