#pragma once

#include <document/Document.h>
#include <host/files/FileStripe.h>

#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A document and the file that it was opened from, from which it reads stream data.
struct OpenedFile {
    Ref<PDF::Document> document; // never null
    Ref<FileStripe> file;        // null once the document was detached
};

// Opens a PDF file. Refused with `Reason::BrokenRule` and the library's code when the file breaks a rule, and with
// `Reason::Unreadable` and no code when it can't be read.
EXPORTED Result<OpenedFile> open(const std::string& path) noexcept;
// The same for a file that is already open, from its beginning.
EXPORTED Result<OpenedFile> open(const Ref<FileStripe>& file) noexcept;

// Copies the data of all streams into memory, as many bytes as the file has of it, and lets go of the file: from
// then on it may be overwritten in place, truncated or deleted, and everything can still be read. `opened.file` is
// then null, and a save no longer checks whether the file was changed. Refused, with the document as before: a file
// that was changed since it was opened, one that can't be read, and with `Reason::LimitReached` one whose streams overlap
// so often that their data is more than `Limits::storedData` (`limitFactor` raises it). A stream whose Length is unusable
// is skipped; it couldn't be read before, either.
EXPORTED std::optional<Refusal> detach(OpenedFile& opened, std::uint64_t limitFactor = 1) noexcept;

} // namespace Host
