#pragma once

#include <document/Document.h>
#include <host/base/Result.h>

#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// How `background` decides.
struct BackgroundOptions {
    // Goes on all the same where the look beforehand finds a reason not to, which becomes a warning.
    bool isForced = false;
};

// What `background` did.
struct BackgroundResult {
    std::size_t pageCount; // how many pages got a background
    // What people should know of the result, in words, one line each: that each page gets copies of its
    // own of the foreign page's resources; that pages don't see resources which the foreign page
    // inherits; that colors may change, since the default color spaces of the two documents meet; and what
    // was gone on with because the options say so.
    std::vector<std::string> warnings;
};

// Puts content of pages of `foreign` beneath the pages of the document, as `Document::addBackground` does,
// but looks first whether the pages will show it as the foreign document does. `foreign` and its file may
// go away afterwards. What the library reads otherwise than the file of `foreign` means it goes into the document
// as it was read: `examine` tells of such places.
//
// Refused before anything is changed, with page, category and name in the words:
// - a name that is taken, by the library's rule: it stands in any category of the page's resources, and
//   not with an equal value in the same one. That goes for the names that come down from the root of the
//   page tree, too, and for pages that share their resources and so would get a second copy;
// - a name with equal values, such as references of the same number, that lead to different contents in
//   the two documents: the library would draw the page's own font or image in place of the foreign one. The
//   comparison is deep, stored stream data included;
// - a name of resources that the foreign page inherits, and in place of which the page has others.
// And without a name: an encrypted `foreign`; a page that is a branch of the page tree, whose content no
// viewer draws; resources that can't be used (`ErrBadContents`), a null document (`ErrNullArgument`), and an
// unknown mode (`ErrInvalidArgument`). What `addBackground` fails with is refused with its code, and the
// document is then as that leaves it: so it is where resources can't be copied (`ErrNoResource`), as with a
// reference that leads nowhere. Stream data is compared by `streamData`, with what that does to later calls.
//
// Time grows with the pages, and for each page with the names in its resources and the foreign ones.
EXPORTED Result<BackgroundResult> background(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign,
    PDF::BackgroundMode mode, const BackgroundOptions& options = {}) noexcept;

} // namespace Host
