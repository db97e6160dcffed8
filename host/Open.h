#pragma once

#include <document/Document.h>
#include <host/FileStripe.h>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A document and the file that it came from, which the document reads stream data from.
struct OpenedFile {
    Ref<PDF::Document> document;
    Ref<FileStripe> file;
};

// Opens a PDF file. Refused with the library's code when the file breaks a rule; without one, and as
// unreadable, when it can't be read.
EXPORTED Result<OpenedFile> open(const std::string& path) noexcept;

} // namespace Host
