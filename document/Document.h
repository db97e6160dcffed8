#pragma once

#include <platform/Stripe.h>
#include <platform/TVector.h>
#include <platform/String.h>
#include <values/Compression.h>

namespace Libraries::Files::PDF {

class Dictionary;
class Form;
class Object;
class ObjectRef;
class Stream;
class Value;

// Which pages of a foreign document go beneath which pages of this one.
enum class BackgroundMode : std::uint32_t {
    FirstPageOnly = 0,       // its first page beneath the first page
    AllPages = 1,            // its first page beneath every page
    PagePairs = 2,           // each of its pages beneath the page of the same index, as far as both go
    PagePairsRepeatLast = 3, // the same, and its last page beneath every page that is left
};

// A PDF file in memory: every indirect object is parsed, only stream data stays in the file and is
// read on demand. A document lives as long as somebody holds it; there is no close. It belongs to
// one thread at a time, and so does everything reached through it.
//
// Failures are told three times: a log line of the filter "PDF", a code in `Error`, and a null, false
// or empty result. Where an operation says null or false, it has left a code.
class EXPORTED Document : public virtual RefCount {
public:
    // Opens a file. The stripe has elements of 4 bytes, one per character of the file, its code point in
    // Windows-1252, and is at its beginning; it is the document's from then on and kept to the end. Accepted is
    // one classic cross-reference section of one subsection, the last of the file: `Prev` and `XRefStm` are not
    // followed, so of an updated file only the newest objects are there, and `Encrypt` has no effect. Values nest
    // up to 500 levels, and the objects together take up to 16 times the file. Nothing is repaired or skipped.
    //
    // Null with `ErrNullArgument` for null, with `ErrInvalidArgument` for elements of another width, else with the
    // code of the first rule that is broken, in the order of the reading: `ErrNoHeaderLine`, `ErrBadHeader`,
    // `ErrBadLineEnding`, `ErrNoEofMarker`, `ErrNoStartXref`, `ErrNoTrailerKeyword`, `ErrBadTrailer`, `ErrBadXref`,
    // `ErrBadObject`.
    static Ref<Document> create(Ref<Interfaces::Stripe> stripe) noexcept;

    // 1 to 8 for PDF 1.0 to 1.7, 13 for 2.0; `versionToString` gives the text.
    virtual std::uint32_t version() const noexcept = 0;
    // The trailer dictionary. Never null in a document that was opened.
    virtual Ref<Dictionary> trailer() const noexcept = 0;
    // The interactive form, built on the first call from the catalog's `AcroForm`, a dictionary or a
    // reference to one, and the same at each later call, with the same code. Null with `ErrNoEntry` when
    // there is no such entry, with `ErrBadCast` when it leads to no dictionary; with `ErrFormCreate` a form of
    // which only the fields before the first failure are there (docs/forms.md tells what fails one). Null with
    // `ErrNoRoot` when there is no usable catalog; then the next call searches anew. Null with `ErrNotAvailable` for
    // a log sink that asks while the form is being built. A success leaves the slot as it was.
    virtual Ref<Form> form() noexcept = 0;
    // The object with the id and generation of `ref`. Null with `ErrNotFound` when there is none, with
    // `ErrNullArgument` for null. Never logs.
    virtual Ref<Object> object(Ref<ObjectRef> ref) const noexcept = 0;
    // Writes the whole document as a new file, to a stream of 4-byte elements like those of `create`, from where
    // it is; it is neither flushed nor closed. Objects go out in ascending order of their ids and keep them; the
    // table has one subsection, so it fits only when the ids are consecutive and the first follows the
    // subsection's first number by one. `Size` of the trailer is brought up to date, in memory too. Stream data
    // is read as by `streamData`, with what that does to later calls of it. False with `ErrNullArgument`,
    // `ErrInvalidArgument` (the width), `ErrWriteVersion`, `ErrWriteObject` or `ErrWriteTrailer`; what was written
    // then is of no use.
    virtual bool write(Ref<Interfaces::Stream> out) noexcept = 0;
    // The data of a stream, in 4-byte elements, one per byte: with `decoded` false the stored bytes, with true
    // those that come out of FlateDecode, the one filter known, or the stored ones when there is no filter.
    // Deliberate: data that the stream holds comes back as it is, whatever `decoded` says, and it holds what was
    // replaced and, from the first call on, that of a save included, the view of its stored bytes. So a caller that
    // needs the decoded form twice keeps the first result. A stream of another document's file is read at the same
    // place of this one's, and doesn't hold that: ask its own. What is held is shared by all callers, and is where the
    // last reader left it: `seek` it to 0. The decoded form is the caller's alone, and at 0.
    //
    // Null with `ErrNullArgument`, `ErrOutOfRange` (the data would begin at or after the end of the file, or it
    // comes from no file), `ErrInvalidArgument` (no dictionary), `ErrBadFilter`, `ErrBadStreamLength`,
    // `ErrConverterCreate` or `ErrStreamConvert`.
    virtual Ref<Interfaces::Stripe> streamData(Ref<Stream> stream, bool decoded) noexcept = 0;
    // Replaces a stream's data by what `data`, of 1-byte elements, holds from its present position to its end, and
    // patches `Length`, also where streams share it. With `compress` the bytes go through the compressor that
    // `Filter` asks for, FlateDecode or none at all; without, they are stored as they are, encoded by the caller
    // already. `Filter` and its parameters are not changed. `data` is back at its position afterwards, and the
    // stream holds the new data and has changed. False with `ErrNullArgument`, `ErrInvalidArgument` (the width of
    // `data`), `ErrStreamNoDict`, `ErrStreamLength` or `ErrStreamConvert`, and the stream as it was, but `data`
    // where the reading ended.
    virtual bool setStreamData(Ref<Stream> stream, Ref<Interfaces::Stripe> data, bool compress) noexcept = 0;
    // Copies the stored data of every stream that is still a view of the file into memory, a byte for
    // each of the file's where the stripe gives them (`Interfaces::ByteReading`) and else 4, so that the
    // file may be overwritten or go away. No change of the document. A stream whose data can't be had is
    // passed over; its code stays in the slot. False with `ErrNoResource`, `ErrInvalidArgument` or
    // `ErrOutOfRange`; the streams before the failing one are copied, and the call can be repeated.
    virtual bool cacheStreams() noexcept = 0;
    // Whether the document differs from what was opened: objects were added, or the value of some object reports
    // a change; what is in an array doesn't count. Neither a save nor the reading of stream data is a change, and
    // a save resets nothing.
    virtual bool changed() const noexcept = 0;
    // Puts the content of pages of `foreign` beneath that of pages of this document, as `mode` pairs them; pages
    // are those of `getPages`, on both sides. The resources of the foreign page are merged into the page's own.
    // No name is changed: one that is in use for something else fails the call. The version becomes the greater
    // of the two. `foreign` is only read, but for arrays of resources; it may be this document, and may be closed
    // afterwards. True without any change when this document has no pages. docs/letterhead.md tells what goes
    // where, what that costs, and what is left after a failure.
    //
    // False with `ErrNullArgument`; before anything is changed, with 0x706 for the foreign page list (0x100 above
    // the code of `getPages`), `ErrForeignPage`, `ErrForeignContent` or `ErrBadPages`; then, with a part of the
    // work left behind, with `ErrBadContents`, `ErrNoResource` (resources that collide or can't be copied, pages
    // that can't be updated), `ErrBadPages`, `ErrForeignStreamData` or `ErrForeignStreamAdd`.
    virtual bool addBackground(Ref<Document> foreign, BackgroundMode mode) noexcept = 0;
    // Brings the stored data of every stream to Flate or to none, with `Filter` and `Length`; all other keys
    // stay, decode parameters too. A stream whose filter is no name is left alone. Deliberate: one with another
    // filter name counts as uncompressed, so that on the way to Flate it is compressed as it is and loses that
    // name. Data is read from its present position, where a save leaves it at its end: after one, `seek` what
    // `streamData` gives to 0. Streams must not share a `Length` (docs/stream-data.md). False with
    // `ErrInvalidArgument` for `Unknown`, or with `ErrNoValue`, `ErrStreamNoDict`, `ErrStreamLength`,
    // `ErrStreamConvert` or `ErrFilterUpdate`; all streams then have their old form, but that the `Filter` of the
    // failing one may be the new one.
    virtual bool recompress(Compression target) noexcept = 0;

    // The object of the trailer's `Root`, of type Catalog. Null with `ErrNoTrailerDict`, `ErrNoRootRef`,
    // `ErrNoRoot` or `ErrBadCatalog`.
    Ref<Object> getCatalog() const noexcept;
    // The object of the catalog's `Pages`, of type Pages. Null with `ErrNoRoot`, `ErrBadCatalog` or
    // `ErrBadPages`.
    Ref<Object> getPageCatalog() const noexcept;
    // The objects of the `Kids` of the root of the page tree, in order. Deliberately flat: of a tree of
    // several levels these are its intermediate nodes, and `Host::pages` gives the pages. Empty with `ErrBadPages` on any failure, and
    // without a code when there are no pages; set the slot to 0 before to tell them apart.
    StackVector<Ref<Object>> getPages() const noexcept;
    // The value itself, or what it refers to, as a dictionary; one reference is followed, not two. Null
    // with `ErrNullArgument`, `ErrUnresolved`, `ErrBadObject` or `ErrBadCast`.
    Ref<Dictionary> valueAsDict(Ref<Value> value) const noexcept;
};

} // namespace Libraries::Files::PDF
