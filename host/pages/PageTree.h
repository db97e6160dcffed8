#pragma once

#include <document/Document.h>
#include <host/base/Result.h>
#include <host/pages/Rectangle.h>
#include <values/Dictionary.h>
#include <values/Object.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// The boxes of a page, from the sheet inwards.
enum class PageBox : std::uint8_t { Media, Crop, Bleed, Trim, Art };
using PageBoxes = std::array<Rectangle, 5>; // by `PageBox`

// A page with all that it inherits.
struct Page {
    // The indirect object of the page; null where the page tree has the dictionary itself.
    Ref<PDF::Object> object;
    // Never null.
    Ref<PDF::Dictionary> dictionary;
    // What content may use, its own or inherited; null when there are none that can be used.
    Ref<PDF::Dictionary> resources;
    // Whether the dictionary above is that of a node of the tree, which other pages may share.
    bool isInheritingResources = false;
    // How a viewer turns the page, clockwise: 0, 90, 180 or 270 degrees.
    int rotation = 0;
    // The size of a unit of the page's coordinates, in points.
    double userUnit = 1;
    // In the page's coordinates, within the media box; one that the page doesn't have is as the standard says, so
    // the crop box is the media box, and the others are the crop box. Never null; pages in a row with the same share it.
    std::shared_ptr<const PageBoxes> boxes;
    // The place of the page in the list where it is listed first, which is its own unless it is listed twice.
    std::size_t firstPlace = 0;

    const Rectangle& box(PageBox which) const noexcept { return (*boxes)[std::size_t(which)]; }
};

// The pages of a document, and what is wrong with its page tree.
struct PageTree {
    std::vector<Page> pages; // in the order of the document
    // One line for each thing that was skipped or assumed, the first `Limits::maxSkipped` of them: nodes that lead in
    // a circle or were listed before, kids of a wrong kind, boxes that are none.
    std::vector<std::string> problems;
};

// All pages of the page tree, whatever its depth. What is wrong in a part of the tree is told and doesn't stop the
// rest. A page that is listed twice is there twice, a node with pages below it only once. A page without a media box
// has the size of a letter, 612 by 792; one whose media box has no area has boxes without area. `Document::getPages`
// is another list: that of the kids of the root.
//
// Refused: null (`ErrNullArgument`), and with `Reason::BrokenRule` a document whose trailer leads to no catalog
// (`ErrNoRoot`), or the catalog to no dictionary as its page tree (`ErrBadPages`), and with `Reason::LimitReached` one
// whose nodes share long lists of kids (`Limits::steps`; `limitFactor` raises it). Time and memory grow with the tree.
EXPORTED Result<PageTree> pages(const Ref<PDF::Document>& document, std::uint64_t limitFactor = 1) noexcept;

} // namespace Host
