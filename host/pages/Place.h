#pragma once

#include <host/pages/Layer.h>
#include <host/pages/PageTree.h>

#include <string>
#include <vector>

namespace Host {

// Which of the foreign pages that were chosen goes with which of the document's.
enum class Pairing : std::uint8_t {
    FirstPageOnly,      // the first one with the first page
    AllPages,           // the first one with every page
    PagePairs,          // each with the page of the same place, as far as both go
    PagePairsRepeatLast, // the same, and the last one with every page that is left
    PagePairsRepeatAll,  // the same, and all of them over and over
};

// How the size of a foreign page becomes that of its place.
enum class Fit : std::uint8_t {
    None,   // it stays as it is
    Shrink, // it becomes smaller where it is too large
    Scale,  // it becomes as large as there is room, or as small
};

// Where it goes in its place, as a viewer shows the page.
enum class Anchor : std::uint8_t { Center, LowerLeft, LowerRight, UpperLeft, UpperRight, Left, Right, Bottom, Top };

// How pages of one document are drawn on those of another. As it begins, the first foreign page goes beneath every
// page, its trim box in the middle of the page's, shrunk where it is larger.
struct Placement {
    // Which pages, and which foreign ones: "1-3,7", "odd", "last" and more (docs/letterhead.md); empty for all.
    std::string pages = {};
    std::string from = {};
    Pairing pairing = Pairing::AllPages;
    Layer layer = Layer::Beneath;
    // What is seen of the foreign page, and what of the page it is fitted to.
    PageBox foreignBox = PageBox::Trim;
    PageBox box = PageBox::Trim;
    Fit fit = Fit::Shrink;
    Anchor anchor = Anchor::Center;
    // From there, in points, to the right and up as a viewer shows the page.
    double offsetX = 0;
    double offsetY = 0;
    // Turns the foreign page clockwise, besides its own turn: a multiple of 90 degrees.
    int rotation = 0;
    // Takes links and form fields along, with all other annotations but signatures. Fields whose names are taken get
    // a number after them; what a link leads to in the foreign document stays behind.
    bool hasAnnotations = false;
    // Raises the limits of what it may take (`Limits::decodedData` and the others).
    std::uint64_t limitFactor = 1;
};

// What `place` did.
struct PlaceResult {
    std::size_t pageCount = 0; // how many pages got something
    // What people should know of the result, one line each; docs/letterhead.md lists them all.
    std::vector<std::string> warnings;
};

// Draws pages of `foreign` on those of the document, as a viewer shows both: pages are turned upright, whatever their
// own turns, and units of either size count. Each foreign page becomes one XObject, however many pages show it, and
// one that an earlier call made is used again. Names, states and faults in the content of either don't affect the
// other. `foreign` is only read, may be the document itself, and it and its file may go away afterwards. The version
// becomes the greater of the two.
//
// Refused, and nothing is changed: with `WrongArgument` a null document (`ErrNullArgument`), a range or a turn that
// can't be; with `Missing` a page that isn't there; with `Encrypted` a document with Encrypt in its trailer; with
// `BrokenRule` a page without area, or a document without pages; with the reasons of `decodeStream` content that can't
// be read, and with the codes of `Document::streamData` other data.
EXPORTED Result<PlaceResult> place(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign,
    const Placement& placement = {}) noexcept;

} // namespace Host
