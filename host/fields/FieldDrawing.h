#pragma once

#include <host/fields/DefaultAppearance.h>
#include <host/fields/EmbeddedFonts.h>
#include <host/fields/FieldChanges.h>
#include <host/fields/TextLayout.h>
#include <host/pages/Edit.h>

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
    // What shows them, once they are committed.
    Ref<PDF::Value> shown = {}, shownOff = {};
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
    };
    // `form` is the AcroForm.
    FieldDrawer(Ref<PDF::Document> document, Ref<PDF::Dictionary> form) noexcept;

    // The document stays as it is. A widget without a usable rectangle is left out, with a warning. Refused: characters
    // that can't be drawn, each by name, and what the budget doesn't have.
    Result<FieldDrawing> draw(
        const FieldNode& field, const FieldUpdate& update, const Options& options, Budget& budget) noexcept;
    // Gives the widgets their looks, as a part of an edit, which is to be applied. The code when there is no room for
    // data; then it must not be applied, and nothing can be drawn any more.
    std::optional<Refusal> commit(FieldDrawing& drawing, Edit& edit) noexcept;
    // Embeds the fonts that were left for later, as a part of an edit.
    std::optional<Refusal> finish(Edit& edit) noexcept;

private:
    // Both draw the last widget of the drawing.
    std::optional<Refusal> drawText(const FieldNode& field, const FieldUpdate& update, const Options& options,
        FieldDrawing& drawing, Budget& budget) noexcept;
    void drawButton(const FieldNode& field, WidgetDrawing& drawing) noexcept;
    void scroll(const FieldNode& field, std::size_t room, std::vector<ShownChoice>& choices, Changes& changes) noexcept;
    DefaultAppearance appearanceOf(const FieldNode& field, const PDF::Dictionary& widget) noexcept;
    Result<std::shared_ptr<const Lettering>> letteringFor(const PDF::Dictionary& widget, const std::string& font,
        std::u32string_view text, const Options& options, std::vector<std::string>& warnings, Budget& budget) noexcept;
    std::shared_ptr<const PlainLettering> plainLettering(
        const PDF::Dictionary& widget, const std::string& font, Budget& budget) noexcept;
    Ref<PDF::Value> findFont(const PDF::Dictionary& widget, const std::string& name) const noexcept;
    const TextFont* fontOf(const Ref<PDF::Value>& entry, Budget& budget) noexcept;
    const TextFont& standardFont(const StandardFont& font) noexcept;
    Ref<PDF::Value> sourceValue(const FontSource& source, PDF::NewObjects& objects) noexcept;
    Ref<PDF::Value> resourcesOf(const AppearanceFonts& fonts, PDF::NewObjects& objects) noexcept;
    Ref<PDF::Value> formOf(
        const WidgetDrawing& drawing, const ContentText& content, PDF::NewObjects& objects) noexcept;

    const Ref<PDF::Document> _document;
    const Ref<PDF::Dictionary> _form;
    std::shared_ptr<TextEngine> _engine; // null until it is needed
    std::optional<Refusal> _failure;     // of a commit
    EmbeddedFonts _embedded;
    GlyphTexts _texts;
    // Held, so that no other dictionary gets the address of one that is replaced.
    struct ReadFont {
        Ref<PDF::Dictionary> dictionary;
        std::optional<TextFont> font; // absent for one that can't be used
    };
    std::unordered_map<const PDF::Dictionary*, ReadFont> _fonts;
    // Of the last field, which most have in common with the next one.
    struct {
        std::string bytes;
        DefaultAppearance appearance;
        Ref<PDF::Value> font;
        std::string fontName;
        Ref<::String> fontKey; // its name among resources
        std::shared_ptr<const PlainLettering> lettering;
        bool isReplaced = false; // the font, by a standard one
    } _last;
    // The fonts of resources, each with its name; in any order that stays the same.
    using ResourceFonts = std::vector<std::pair<std::string, Ref<PDF::Value>>>;
    struct ByPlace {
        bool operator()(const ResourceFonts& a, const ResourceFonts& b) const noexcept
        {
            return std::lexicographical_compare(
                a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
                    return std::pair(x.second.get(), std::string_view(x.first))
                        < std::pair(y.second.get(), std::string_view(y.first));
                });
        }
    };
    std::map<ResourceFonts, Ref<PDF::Value>, ByPlace> _resources;
    std::map<const StandardFont*, TextFont> _standardFonts;
    std::map<const StandardFont*, Ref<PDF::Value>> _standardValues;
};

} // namespace Host
