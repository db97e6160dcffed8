#pragma once

#include <document/Document.h>
#include <host/files/FileOutput.h>
#include <host/files/Open.h>

namespace Host {

// What a save looks at.
struct SaveOptions {
    // Saves as well what is refused beforehand: a document of which only a part is in memory.
    bool isPartialAllowed = false;
    // Leaves out the comparison of the new file with the document.
    bool isUnverified = false;
    // The file that the document was opened from; null when it didn't come from one.
    Ref<FileStripe> source;
    // Refuses a document whose source says anything that the new file would not give back as it was meant. Files
    // whose pages were put beneath are not asked; `examine` them before.
    bool isStrict = false;
};

// What a save did.
struct Saved {
    std::uint64_t size; // of the new file, in bytes
    Durability durability; // whether it survives a loss of power
};

// Writes the document as a new file that takes the place of whatever stands at `path`, as `FileOutput`
// tells. That may be the file that the document was opened from: the document goes on reading the old
// one. `Size` of the document's trailer is brought up to date in any case.
//
// Refused beforehand: a document without objects or catalog, one whose trailer has Prev, XRefStm or
// Encrypt, and one whose source was changed since it was opened. A strict save examines the source, as
// `examine` tells, and refuses the document as well when it finds a loss of meaning, with the counts in the
// words; when the source can't be examined; and when there is none. Then the new file is written, opened
// again before it has its name, and compared: version, line ending, trailer but for Size, and object by
// object id, generation and written text with stream data. What does not come back as it was is refused,
// with the object and the reason in the words. A failing read or write, and a source that is changed
// meanwhile, is refused as well. After a refusal the target is as it was.
EXPORTED Result<Saved> save(const Ref<PDF::Document>& document, const std::string& path,
    const SaveOptions& options = {}) noexcept;
// The same for a document with the file that it was opened from, which becomes the options' source.
EXPORTED Result<Saved> save(const OpenedFile& opened, const std::string& path, SaveOptions options = {}) noexcept;

} // namespace Host
