#pragma once

#include <host/fields/Lettering.h>
#include <host/fields/NewValues.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>

namespace Host {

// The fonts of a text engine in one document: composite fonts, each with a subset of all glyphs that were drawn so far.
class EmbeddedFonts {
public:
    explicit EmbeddedFonts(Ref<PDF::Document> document) noexcept : _document(std::move(document)) {}

    // When the programs of the fonts are made.
    enum class Programs { AtOnce, Later };

    // Takes the glyphs in, and makes the subsets that have them, too; the document stays as it is. Refused as by the
    // engine.
    std::optional<Refusal> prepare(TextEngine& engine, const GlyphTexts& texts,
        const std::vector<TextEngine::Glyph>& glyphs, Programs programs) noexcept;
    // Makes the subsets that were left for later.
    std::optional<Refusal> preparePrograms(TextEngine& engine) noexcept;
    // Brings them into the document, new ones with the new objects. False with a code when a stream can't be made.
    bool commit(PDF::NewObjects& objects) noexcept;
    // What an appearance refers to; only after `commit`.
    Ref<PDF::Value> find(std::uint32_t font) const noexcept;

private:
    struct Used {
        double width = 0;
        std::u32string text;
    };
    struct Embedded {
        TextEngine::Font facts;
        std::map<std::uint32_t, Used> glyphs;
        std::optional<std::string> program; // that is to be brought into the document
        bool isChanged = false;
        bool isProgramDue = false; // it lacks glyphs
        Ref<PDF::Value> reference; // of the composite font; null before the first time
        Ref<PDF::Dictionary> descendant;
        Ref<PDF::Stream> programStream, characterMap;

        std::optional<Refusal> makeProgram(TextEngine& engine, std::uint32_t number) noexcept;
    };
    bool create(Embedded& font, PDF::NewObjects& objects) noexcept;
    bool update(Embedded& font) noexcept;

    const Ref<PDF::Document> _document;
    std::map<std::uint32_t, Embedded> _fonts;
};

} // namespace Host
