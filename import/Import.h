#pragma once

#include <host/files/Open.h>
#include <import/Options.h>
#include <import/Report.h>

// Opens the files that the core doesn't: with cross-reference streams, object streams, several tables, encryption, or
// the word `trailer` and its dictionary on one line. libqpdf reads them, and what it read becomes a classic file, the
// image, that the core opens as any other. Two threads may each open a file at the same time.
namespace Import {

// A document that was opened, and how.
struct Imported {
    // The document is one like any other, with nothing changed. It reads stream data that isn't encrypted from the
    // original file, which `opened.file` is.
    Host::OpenedFile opened;
    Report report;
};

// Opens a PDF file. Refused, with what libqpdf said as the message, when libqpdf can't read it, and, without repair,
// when it warns of something that isn't among what loses nothing: `BrokenRule`, or `Unsupported` for a cipher that it
// doesn't have. Other reasons are `PasswordNeeded`, `LimitReached`, `OutOfMemory`, `Unreadable` and `ChangedMeanwhile`.
EXPORTED Host::Result<Imported> open(const std::string& path, const Options& options = {}) noexcept;
// The same for a file that is open already.
EXPORTED Host::Result<Imported> open(const Ref<Host::FileStripe>& file, const Options& options = {}) noexcept;

} // namespace Import
