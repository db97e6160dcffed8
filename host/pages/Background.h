#pragma once

#include <document/Document.h>
#include <host/base/Result.h>

#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// How `mergeBackground` decides.
struct BackgroundOptions {
    // Goes on where the preflight finds a reason not to, which becomes a warning.
    bool isForced = false;
    // Raises the limits of what it may take (`Limits::copies`, `steps` and `storedData`).
    std::uint64_t limitFactor = 1;
};

// What `mergeBackground` did.
struct BackgroundResult {
    std::size_t pageCount; // how many pages got a background
    // What people should know of the result, one line each; docs/letterhead.md lists them all.
    std::vector<std::string> warnings;
};

// Puts content of pages of `foreign` beneath the pages of the document, as `Document::addBackground` does, but looks
// first whether the pages will show it as the foreign document does. `foreign` and its file may go away afterwards.
//
// Refused before anything is changed: with `Reason::Conflict`, and page, category and name in the message, where a
// name of resources is in use or leads to other contents; with `Encrypted` an encrypted `foreign`; with `BrokenRule`
// a page or resources that can't be used (`ErrBadContents`); with `WrongArgument` a null document (`ErrNullArgument`)
// and an unknown mode (`ErrInvalidArgument`); with `LimitReached`, also when forced, where the values that are copied, the
// contents of pages that are listed many times, or the names that are compared go beyond a limit. What `addBackground` itself fails with is refused with its code, and
// the document is then as that leaves it. docs/letterhead.md tells the rules.
//
// Time grows with the pages, and for each page with the names in its resources and the foreign ones.
EXPORTED Result<BackgroundResult> mergeBackground(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign,
    PDF::BackgroundMode mode, const BackgroundOptions& options = {}) noexcept;

} // namespace Host
