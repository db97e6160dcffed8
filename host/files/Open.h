#pragma once

#include <document/Document.h>
#include <host/files/FileStripe.h>

#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A document and the file that it came from, which the document reads stream data from.
struct OpenedFile {
    Ref<PDF::Document> document; // never null
    Ref<FileStripe> file;        // null once the document was detached
};

// Opens a PDF file. Refused with the library's code when the file breaks a rule; without one, and as
// unreadable, when it can't be read.
EXPORTED Result<OpenedFile> open(const std::string& path) noexcept;
// The same for a file that is open already, from its beginning.
EXPORTED Result<OpenedFile> open(const Ref<FileStripe>& file) noexcept;

// Takes the data of all streams into memory, as many bytes as the file has of it, and gives the file up:
// from then on it may be overwritten in place, cut short or deleted, and everything still reads.
// `opened.file` is then null, and a save asks no more whether the file is as it was. Refused, and the document
// as before: a file that was changed since it was opened, and one that can't be read. A stream whose Length is
// no good is passed over; it can't be read before, either.
EXPORTED std::optional<Refusal> detach(OpenedFile& opened) noexcept;

} // namespace Host
