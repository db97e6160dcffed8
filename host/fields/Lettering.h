#pragma once

#include <host/fields/ContentText.h>
#include <host/fonts/TextEngine.h>
#include <host/fonts/TextFont.h>

#include <map>
#include <variant>

namespace Host {

// A font that an appearance uses: one of the document, a standard one, or one of the engine.
using FontSource = std::variant<Ref<PDF::Value>, const StandardFont*, std::uint32_t>;

// The fonts that an appearance uses, under their names among its resources.
class AppearanceFonts {
public:
    // The name, as it is written with its solidus; `wish` if that is free.
    std::string add(const FontSource& source, const std::string& wish) noexcept;

    struct Entry {
        std::string name; // decoded
        FontSource source;
    };
    const std::vector<Entry>& entries() const noexcept { return _entries; }

    // The glyphs of the engine's fonts that it draws.
    std::vector<TextEngine::Glyph> glyphs;

private:
    std::vector<Entry> _entries;
};

// Which characters the glyphs of the engine's fonts are given back as. It is one text for each glyph in all of a
// document, so that what a glyph draws besides is told where it is drawn.
class GlyphTexts {
public:
    // Whether that is the text of the glyph; it becomes so when it has none.
    bool claim(const TextEngine::Glyph& glyph, std::u32string_view text) noexcept
    {
        return _texts.try_emplace({glyph.font, glyph.id}, text).first->second == text;
    }
    // Empty for none.
    std::u32string find(std::uint32_t font, std::uint32_t id) const noexcept
    {
        const auto found = _texts.find({font, id});
        return found != _texts.end() ? found->second : std::u32string();
    }

private:
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::u32string> _texts;
};

// Draws texts in the fonts that have their characters. Widths are in 1/1000 of the font's size.
class Lettering {
public:
    virtual ~Lettering() noexcept = default;
    virtual LineHeights heights() const noexcept = 0;
    // How wide each character of a paragraph is; one that is drawn with another one before it is 0 wide.
    virtual std::vector<double> widths(std::u32string_view paragraph) const noexcept = 0;
    virtual bool isRightToLeft(std::u32string_view paragraph) const noexcept = 0;
    // Sets font and size, and shows the line from the present place on.
    virtual void show(std::u32string_view line, bool isRightToLeft, double size, ContentText& content,
        AppearanceFonts& fonts) const noexcept = 0;
};

// By fonts of the document, or standard ones, a code for each character. The first font that has one draws it.
class PlainLettering final : public Lettering {
public:
    struct Font {
        const TextFont* font;
        FontSource source;
        std::string name; // by which the field knows it; may be empty
    };
    explicit PlainLettering(std::vector<Font> fonts) noexcept : _fonts(std::move(fonts)) {}

    // Whether the fonts draw the character rightly, one glyph beside the other.
    bool has(char32_t character) const noexcept;

    // Lettering. What no font has is left out.
    LineHeights heights() const noexcept override { return _fonts.front().font->heights(); }
    std::vector<double> widths(std::u32string_view paragraph) const noexcept override;
    bool isRightToLeft(std::u32string_view) const noexcept override { return false; }
    void show(std::u32string_view line, bool isRightToLeft, double size, ContentText& content,
        AppearanceFonts& fonts) const noexcept override;

private:
    std::pair<std::size_t, std::optional<FontCode>> find(char32_t character) const noexcept;

    std::vector<Font> _fonts;
};

// By an engine.
class ShapedLettering final : public Lettering {
public:
    // Both must outlive it.
    ShapedLettering(TextEngine& engine, GlyphTexts& texts) noexcept : _engine(engine), _texts(texts) {}

    // Lettering. The heights are those of the fonts that `widths` has met.
    LineHeights heights() const noexcept override;
    std::vector<double> widths(std::u32string_view paragraph) const noexcept override;
    bool isRightToLeft(std::u32string_view paragraph) const noexcept override;
    void show(std::u32string_view line, bool isRightToLeft, double size, ContentText& content,
        AppearanceFonts& fonts) const noexcept override;

private:
    TextEngine& _engine;
    GlyphTexts& _texts;
    mutable LineHeights _heights{0, 0}; // of the fonts that were met
};

// Whether a character is there without being drawn: marks of direction and joining.
bool isInvisible(char32_t character) noexcept;
// Whether a character takes its form from those beside it, or its place from the direction.
bool needsShaping(char32_t character) noexcept;

} // namespace Host
