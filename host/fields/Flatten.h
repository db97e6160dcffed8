#pragma once

#include <document/Document.h>
#include <host/base/Result.h>
#include <host/fonts/TextEngine.h>

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Which fields: all, with every widget on the pages, or those of these paths, as `listFields` gives them. The path of
// an inner node of the form takes all fields beneath it.
struct AllFields {};
using FieldSelection = std::variant<AllFields, std::vector<std::string>>;

// Where a viewer shows widgets that become part of the pages: what people see there is what they get.
enum class Medium : std::uint8_t {
    Screen, // all but those with the flags Hidden or NoView
    Print,  // those with the flag Print but not Hidden
};

// How fields are flattened.
struct FlattenOptions {
    Medium medium = Medium::Screen;
    // What draws texts of fields that have no appearance so far, and whether texts that nothing can draw are left
    // out: as `FillOptions` have them.
    std::function<Result<std::shared_ptr<TextEngine>>()> engine = {};
    bool isAnyTextAllowed = false;
    // Raises the limits of what all fields together may take (`Limits::texts` and those after it).
    std::uint64_t limitFactor = 1;
};

// What `flatten` did.
struct FlattenResult {
    std::size_t fieldCount = 0;  // fields that went
    std::size_t widgetCount = 0; // widgets that went from pages
    std::size_t drawnCount = 0;  // of these, that are part of their pages: the others showed nothing
    std::size_t pageCount = 0;   // pages that something was drawn on
    // What people should know of the result, one line each.
    std::vector<std::string> warnings;
};

// Makes fields a part of their pages, which look as before, and can't be filled any more. The normal appearance of each
// widget, for a button that of its state, is drawn above the content of each page that lists the widget, at the place
// where viewers show it, turned as they turn it, and with its optional content. A text or a choice without an
// appearance, or in a form that asks viewers to draw its fields (`NeedAppearances`), is drawn first, and so are check
// boxes and radio buttons without one, as `FormFiller` draws them. What shows nothing, such as an unsigned signature
// without an appearance, draws nothing.
//
// Then widgets and fields go: from the pages, from the form with all fields above that are empty then, and from its
// order of calculation. The AcroForm itself goes from the catalog when no field is left; else its XFA, which would show
// the fields as they were, with a warning. In the structure of a tagged document the drawn content takes the widget's
// place. Objects that nothing refers to any more stay in the file; one with object streams leaves them out
// (import/Save.h).
//
// Refused, and nothing is changed: by the rules of `listFields` and of `pages`; with `Missing` a path that no field
// has; with `Unsupported` a text with characters that can't be drawn, by the field's name; with `LimitReached` widgets
// that many pages share, and long texts that many fields inherit; with the reasons of `place` a page whose content
// can't be read. Time and memory grow with the document.
EXPORTED Result<FlattenResult> flatten(const Ref<PDF::Document>& document, const FieldSelection& which,
    const FlattenOptions& options = {}) noexcept;

} // namespace Host
