#pragma once

#include <document/Document.h>
#include <document/ReadingNotes.h>
#include <platform/TConstArray.h>

// A document as a file that says all that its source said: values as they were written (values/Exact.h), and a table
// that fits the ids. All else is as `Document::write` has it.
//
// The table begins at 0, ids without an object have free rows, linked, with the generations that they had, and `Size`
// is the highest id plus 1. A comment of four bytes above 127 follows the header line, and CR LF the word "stream"
// where lines end in CR. Of what an application made, backslashes are written as \134, and the angle brackets in
// all strings of the trailer in octal digits, so that the format and this library read the same. What this library's
// reading took apart otherwise than the format (document/ReadingNotes.h) is written as it was read, but for what
// `unwrittenNotes` leaves out.
namespace Libraries::Files::PDF {

struct ExactOptions {
    // The second part of the trailer's `ID` stays as it is. Else it comes from the content of the file, the trailer
    // left out; the same document gives the same file again. A trailer without an `ID` of two strings gets none.
    bool isIdKept = false;
};

// Writes to a stream of 4-byte elements, or one that takes bytes (`Interfaces::ByteWriting`). The document stays as it
// is, its trailer too. The result is the trailer that the file has, which shares the document's values; null with the
// codes of `Document::write`, with `ErrOutOfRange` and nothing written when the free rows would take more bytes than
// 16 times the source and 1 MiB, or with `ErrInvalidArgument` for a document that `Document::create` didn't make.
EXPORTED Ref<Dictionary> writeExactly(const Ref<Document>& document, const Ref<Interfaces::Stream>& out,
    const ExactOptions& options = {}) noexcept;

// What the reading took apart otherwise than the format and an exact file doesn't say as the source did. Not among it
// is what is in an array or a dictionary that is as it was read: it goes out as the source had it, brackets and all, if
// the stripe shows its bytes (`Interfaces::ShownBytes`) and that is no more than 1 MiB.
EXPORTED ReadingNotes unwrittenNotes(const Ref<Document>& document) noexcept;

// As `writtenText` (document/Inspection.h), in the form of an exact file.
EXPORTED Ref<TConstArray<std::uint32_t>> exactText(const Ref<Document>& document, const Ref<Value>& value) noexcept;

} // namespace Libraries::Files::PDF
