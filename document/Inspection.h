#pragma once

#include <platform/TConstArray.h>
#include <platform/TVector.h>

#include <document/Document.h>
#include <document/ReadingNotes.h>

// What programs that look at a whole document need besides the operations of `Document`. For null all of
// them leave `ErrNullArgument`, for a document that `Document::create` didn't make `ErrInvalidArgument`.
namespace Libraries::Files::PDF {

// All indirect objects in the order of the document's table: ascending ids, new objects last.
EXPORTED StackVector<Ref<Object>> objectsOf(const Ref<Document>& document) noexcept;
// The same objects in the order in which they are written: by ascending id.
EXPORTED StackVector<Ref<Object>> objectsAsWritten(const Ref<Document>& document) noexcept;
// The line ending that the file was read with and is written with: CR, LF or CR LF.
EXPORTED Ref<::String> lineEndingOf(const Ref<Document>& document) noexcept;
// The elements of the file that the document was opened from, by which work on it can be bounded; 0 on failure.
EXPORTED std::uint64_t fileSizeOf(const Ref<Document>& document) noexcept;
// Whether the data of a stream is to be read from the file of another document than this one, so that `streamData`
// gives bytes of the wrong file: no data is held for it, and that document read it.
EXPORTED bool isOfOtherFile(const Ref<Document>& document, const Ref<Stream>& stream) noexcept;
// How much stored data the streams of a document have, in elements, each stream for itself: more than the file when they
// overlap.
struct StoredSizes {
    std::uint64_t inFile = 0; // of those that are read from the document's file, as far as it goes
    std::uint64_t held = 0;   // of those that hold their data
};
// Zeros on failure. No code is left for a stream without data.
EXPORTED StoredSizes storedSizes(const Ref<Document>& document) noexcept;
// The characters that stand for the value in a written file, one element each; a stream's data, as
// stored, included, which counts as a call of `streamData`. Null when the value can't be written, with
// `ErrInvalidArgument`, `ErrNoResource` or `ErrOutOfRange`, or with `ErrNullArgument` for a null value.
EXPORTED Ref<TConstArray<std::uint32_t>> writtenText(const Ref<Document>& document, const Ref<Value>& value) noexcept;

// What the reading of the file took apart otherwise than the format. The opening notes it; only the ends of stream
// data are looked at here, of streams whose data is still read from the file. Of a stripe that doesn't show its bytes
// (`Interfaces::ShownBytes`) nothing is noted of what comes after values, data and the table.
EXPORTED ReadingNotes readingNotes(const Ref<Document>& document) noexcept;

} // namespace Libraries::Files::PDF
