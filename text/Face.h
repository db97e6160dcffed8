#pragma once

#include <host/fonts/TextEngine.h>

#include <hb.h>

#include <memory>

namespace Text {

// A font file, or a font of a collection, that can be embedded. Measures are in 1/1000 of the font's size.
class Face {
public:
    // Refused, in words that go on from the file: what is no font with outlines, one of which no subset can be made,
    // and one whose licence forbids to embed it.
    static Host::Result<Face> open(const std::string& path, unsigned index) noexcept;

    // The glyph of a character; 0 for none.
    std::uint32_t find(char32_t character) const noexcept;
    // How wide a glyph is by itself.
    double width(std::uint32_t glyph) const noexcept;
    const Host::TextEngine::Font& facts() const noexcept { return _facts; }
    // A program with the glyphs, and those that they consist of, under the same ids.
    Host::Result<std::string> subset(const std::vector<std::uint32_t>& glyphs) const noexcept;
    hb_font_t* font() const noexcept { return _font.get(); }
    // Of a unit of the font.
    double scale() const noexcept { return _scale; }

private:
    Face() noexcept = default;
    void readFacts() noexcept;

    std::shared_ptr<hb_face_t> _face;
    std::shared_ptr<hb_font_t> _font;
    Host::TextEngine::Font _facts;
    double _scale = 1;
    bool _hasCids = false; // the same as the numbers of the glyphs
};

} // namespace Text
