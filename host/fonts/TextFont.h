#pragma once

#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <host/fonts/StandardFonts.h>

#include <document/Document.h>

#include <optional>
#include <string>
#include <unordered_map>

namespace Host {

// How high lines of a font are, in 1/1000 of its size: from the baseline up, and down, which is negative.
struct LineHeights {
    double ascent = 949, descent = -207; // of Helvetica
    double height() const noexcept { return ascent - descent; }
};

// A character as a font has it.
struct FontCode {
    std::uint16_t code = 0;
    std::uint8_t byteCount = 1;
    double width = 0; // in 1/1000 of the font's size
};

// The characters that a font of a document, or a standard one, can draw, so that readers show them and give them back
// as text: of simple fonts by `Encoding`, `ToUnicode` and `Widths`, of composite ones with Identity-H by `ToUnicode`.
// Of an embedded font whose name says that it is a subset, only what is in its TrueType program counts.
class TextFont {
public:
    // Refused, in words that go on from "the font": one of a kind that can't be used, without widths, or one in
    // which no character is found. Its data is read as far as the budget goes.
    static Result<TextFont> read(
        const Ref<PDF::Document>& document, const PDF::Dictionary& font, Budget& budget) noexcept;
    // The font by its own dictionary, as `StandardFont::dictionary` gives it.
    static TextFont standard(const StandardFont& font) noexcept;

    // Absent when the font doesn't have it. A blank that doesn't break is a blank where there is no other.
    std::optional<FontCode> find(char32_t character) const noexcept;
    const LineHeights& heights() const noexcept { return _heights; }
    // `BaseFont`, with its tag.
    const std::string& name() const noexcept { return _name; }
    // The one that looks most like it.
    const StandardFont& substitute() const noexcept;

private:
    TextFont() noexcept = default;
    class Reading;
    void add(char32_t character, FontCode code) noexcept { _codes.try_emplace(character, code); }

    std::unordered_map<char32_t, FontCode> _codes;
    LineHeights _heights;
    std::string _name;
    std::uint32_t _descriptorFlags = 0;
};

} // namespace Host
