#pragma once

#include <document/Document.h>
#include <forms/Field.h>
#include <host/base/Result.h>
#include <host/fields/FieldKind.h>
#include <host/fields/FieldValue.h>
#include <host/pages/Rectangle.h>
#include <values/Object.h>

#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A place where a field is shown.
struct FormWidget {
    // The number of its page, from 1 on: of the first one that has it among its annotations, else of the one that it
    // names (`P`); 0 when no page shows it.
    std::size_t page = 0;
    // The object of that page; null where there is none, or the page tree has the page itself.
    Ref<PDF::Object> pageObject;
    // `Rect`, in the coordinates of the page as it is before any rotation (default user space), its corners in order;
    // absent when it is no rectangle.
    std::optional<Rectangle> rectangle;
    // Of a check box or radio button, in which states it can be besides "Off".
    std::vector<std::string> states;
};

// A terminal field as users see it. All texts are UTF-8. What the standard lets a field inherit is looked for
// in the fields above, too, and references are followed; an entry of the wrong kind counts as absent.
struct FormField {
    // The names from the top down with "." between them, which may occur in a name, too. A field at the
    // top without a name has its index in `Fields`. Fields of the same path and kind are listed as one, as the
    // standard treats them.
    std::string path;
    FieldKind kind = FieldKind::Unknown;
    std::uint32_t flags = 0; // `Ff`, bits of `PDF::Field::Flags`
    // `V` and `DV`; none when absent. That of a signature isn't given, only whether it is signed.
    std::optional<FieldTexts> value;
    std::optional<FieldTexts> defaultValue;
    bool isSigned = false;
    // `Opt` of a choice; of check boxes and radio buttons the export values, if they have any.
    std::vector<FieldOption> options;
    // The states in which check boxes or radio buttons can be besides "Off": those of all widgets, in their order.
    std::vector<std::string> states;
    std::optional<std::int64_t> maxLength; // `MaxLen`, in UTF-16 units
    std::string tooltip;                   // `TU`
    std::string defaultAppearance;         // `DA`
    PDF::Field::Quadding quadding = PDF::Field::Quadding::NotSet;
    std::vector<FormWidget> widgets; // in the order of the form
};
// What `listFields` finds.
struct FormFields {
    std::vector<FormField> fields; // in the order of the form
    // What could not be shown, in words, the first hundred: parts of the form that lead nowhere or in circles,
    // for instance. All other fields are listed.
    std::vector<std::string> skipped;
};

// Every terminal field of the document's form, read from the dictionaries as they are now; none when the document
// has no form. Time and memory grow with fields, pages and annotations. Texts are given up to `Limits::texts`, of streams
// up to `Limits::decodedData`; the rest is left out, and `skipped` says so. Refused: null, a document with Encrypt, one
// without a usable catalog, an AcroForm that is not a dictionary, and with `Reason::LimitReached` one whose names or
// lists go beyond `Limits::texts` or `Limits::steps`. `limitFactor` raises these limits.
EXPORTED Result<FormFields> listFields(
    const Ref<PDF::Document>& document, std::uint64_t limitFactor = 1) noexcept;

} // namespace Host
