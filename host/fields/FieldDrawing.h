#pragma once

#include <host/fields/EmbeddedFonts.h>
#include <host/fields/FieldChanges.h>
#include <host/fields/TextLayout.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <unordered_map>

namespace Host {

// The looks of a widget as they are to become.
struct WidgetDrawing {
    Ref<PDF::Dictionary> widget;
    WidgetLook look;
    ContentText content;
    AppearanceFonts fonts;
    // Of a button: the state that the content is of; `off` is for the other one.
    std::string state;
    ContentText off;
};

// What becomes of the looks of a field.
struct FieldDrawing {
    std::vector<WidgetDrawing> widgets;
    Changes changes; // besides
    std::vector<std::string> warnings;

    // Whether an engine drew something.
    bool isShaped() const noexcept
    {
        return std::any_of(
            widgets.begin(), widgets.end(), [](const auto& widget) { return !widget.fonts.glyphs.empty(); });
    }
};

// Draws the fields of one document, with the fonts that it has.
class FieldDrawer {
public:
    struct Options {
        std::function<Result<std::shared_ptr<TextEngine>>()> engine; // as `FillOptions` have it
        bool isAnyTextAllowed = false;                               // what can't be drawn is left out, with a warning
        bool areFontsLater = false;                                  // `finish` embeds them
        bool areLooksKept = false; // only widgets without any are drawn, where something is to be seen
    };
    // `form` is the AcroForm.
    FieldDrawer(Ref<PDF::Document> document, Ref<PDF::Dictionary> form) noexcept;

    // The document stays as it is. A widget without a usable rectangle is left out, with a warning. Refused: characters
    // that can't be drawn, each by name, and what the budget doesn't have.
    Result<FieldDrawing> draw(
        const FieldNode& field, const FieldUpdate& update, const Options& options, Budget& budget) noexcept;
    // Gives the widgets their looks. The code when there is no room for data; then some of them may have them.
    std::optional<Refusal> commit(FieldDrawing& drawing) noexcept;
    // Embeds the fonts that were left for later.
    std::optional<Refusal> finish() noexcept;

private:
    // Both draw the last widget of the drawing.
    std::optional<Refusal> drawText(const FieldNode& field, const FieldUpdate& update, const Options& options,
        FieldDrawing& drawing, Budget& budget) noexcept;
    void drawButton(const FieldNode& field, WidgetDrawing& drawing) noexcept;
    void scroll(const FieldNode& field, std::size_t room, std::vector<ShownChoice>& choices, Changes& changes) noexcept;
    Result<std::unique_ptr<Lettering>> letteringFor(const PDF::Dictionary& widget, const std::string& font,
        std::u32string_view text, const Options& options, std::vector<std::string>& warnings, Budget& budget) noexcept;
    PlainLettering plainLettering(const PDF::Dictionary& widget, const std::string& font, Budget& budget) noexcept;
    Ref<PDF::Value> findFont(const PDF::Dictionary& widget, const std::string& name) const noexcept;
    const TextFont* fontOf(const Ref<PDF::Value>& entry, Budget& budget) noexcept;
    const TextFont& standardFont(const StandardFont& font) noexcept;
    Ref<PDF::Value> sourceValue(const FontSource& source) noexcept;
    Ref<PDF::Value> formOf(const WidgetDrawing& drawing, const ContentText& content) noexcept;

    const Ref<PDF::Document> _document;
    const Ref<PDF::Dictionary> _form;
    std::shared_ptr<TextEngine> _engine; // null until it is needed
    EmbeddedFonts _embedded;
    GlyphTexts _texts;
    std::unordered_map<const PDF::Dictionary*, std::optional<TextFont>> _fonts;
    std::map<const StandardFont*, TextFont> _standardFonts;
    std::map<const StandardFont*, Ref<PDF::Value>> _standardValues;
};

} // namespace Host
