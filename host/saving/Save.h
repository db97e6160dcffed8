#pragma once

#include <document/Document.h>
#include <host/files/FileOutput.h>
#include <host/files/Open.h>

namespace Host {

// How a save decides.
struct SaveOptions {
    // Also saves what is refused beforehand: a document of which only a part is in memory.
    bool isPartialAllowed = false;
    // Leaves out the comparison of the new file with the document.
    bool isUnverified = false;
    // The file that the document was opened from; null when it didn't come from one.
    Ref<FileStripe> source = nullptr;
    // Refuses, whatever is allowed, a document whose source says anything that would lose its meaning in the new file.
    // The files of backgrounds are not examined; `examine` them before.
    bool isStrict = false;
    // Also saves a document that was read otherwise than the format means it, as it was read.
    bool isLossyAllowed = false;
    // Writes by `Document::write`: numbers and strings as this library reads them, the rows of the table in the order
    // of the ids. What would not be read back is refused, so a document whose ids leave gaps is.
    bool isPlain = false;
    // Leaves the second part of the trailer's ID as it is; a plain file has it so in any case.
    bool isIdKept = false;
    // Raises the limits of what the new file may take of the old one (`Limits::storedData`, 16 times its size).
    std::uint64_t limitFactor = 1;
};

// What a save did.
struct Saved {
    std::uint64_t size; // of the new file, in bytes
    Durability durability; // whether it survives a loss of power
};

// Writes the document as a new file that replaces whatever is at `path`, as `FileOutput` describes.
// That may be the file that the document was opened from: the document goes on reading the old
// one. The file is exact (`document/ExactWriting.h`): numbers and strings are in it as they were in the source, and the
// ids may leave gaps. The document stays as it is; a plain save updates `Size` of its trailer.
//
// Refused beforehand: a document without objects or catalog (`Reason::BrokenRule`); one whose trailer has Prev or
// XRefStm, or whose table has more than one subsection (`Partial`), or with Encrypt (`Encrypted`); one whose reading
// noted what can't be written as it was (`Lossy`; document/ReadingNotes.h); one whose source was changed since it was
// opened (`ChangedMeanwhile`); one whose streams overlap so often that the new file would be many times as large
// (`LimitReached`); when strict, one of which `examine` finds a loss of meaning (`Lossy`, with the counts in the
// message), or whose source can't be examined; and one with a stream whose data would be taken from the wrong file
// (`isOfOtherFile`), whatever is allowed (`Unwritable`). Then the new file is written, opened again before it has its
// name, and compared: version, line ending, trailer, and object by object id, generation, exact value and stream data.
// What is not read back as it was is refused (`Difference`, with the object and the cause in the message; a name with a
// blank, say, which would be a name and something else), as are failing reads and writes, gaps between the ids whose
// rows would take more than 16 times the bytes of the source and 1 MiB, and a source that is changed meanwhile. After a
// refusal the target is as it was.
EXPORTED Result<Saved> save(const Ref<PDF::Document>& document, const std::string& path,
    const SaveOptions& options = {}) noexcept;
// The same for a document with the file that it was opened from, which becomes the options' source.
EXPORTED Result<Saved> save(const OpenedFile& opened, const std::string& path, SaveOptions options = {}) noexcept;
// All of it but the last step: the new file is written and compared, and `commit` gives it its name. Without that
// nothing is left of it.
EXPORTED Result<Ref<FileOutput>> writeVerified(const Ref<PDF::Document>& document, const std::string& path,
    const SaveOptions& options = {}) noexcept;

} // namespace Host
