#pragma once

#include <document/Document.h>
#include <host/files/FileStripe.h>

#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A file that a document was just written to.
struct WrittenFile {
    Ref<FileStripe> file;
    Ref<PDF::Dictionary> trailer; // what `PDF::writeExactly` gave; null for a file of `Document::write`
};

// Opens the file and compares: version, line ending, trailer, and object by object id, generation, value and stream
// data. Values are compared by their exact forms, those of a file of `Document::write` by the written text and by the
// values that they are made of, and of such a one not the trailer's Size. The refusal names the first object that is
// not read back as it was, and the cause if it is known; none when the file is the same document.
std::optional<Refusal> findDifference(const Ref<PDF::Document>& document, const WrittenFile& written) noexcept;

} // namespace Host
