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
    // Opens a file. The stripe has elements of 4 bytes, one per character of the file, its code point
    // in Windows-1252, and stands at its beginning; it is the document's from then on and kept to the
    // end. Null when any rule is broken; nothing is repaired or skipped. Codes: `ErrNullArgument` for
    // null, `ErrInvalidArgument` for elements of another width, then in the order of the reading
    // `ErrNoHeaderLine`, `ErrBadHeader`, `ErrBadLineEnding`, `ErrNoEofMarker`, `ErrNoStartXref`,
    // `ErrNoTrailerKeyword`, `ErrBadTrailer`, `ErrBadXref` and `ErrBadObject`.
    //
    // What is accepted: one classic cross-reference section of one subsection, the last of the file.
    // `Prev` and `XRefStm` are not followed, so of an updated file only the newest objects are there;
    // `Encrypt` has no effect. Two limits are this reader's own: values nest up to 500 levels, and the
    // objects together take up to 16 times the file, which only objects inside objects could exceed.
    static Ref<Document> create(Ref<Interfaces::Stripe> stripe) noexcept;

    // 1 to 8 for PDF 1.0 to 1.7, 13 for 2.0; `versionToString` gives the text.
    virtual std::uint32_t version() const noexcept = 0;
    // The trailer dictionary. Never null in a document that was opened.
    virtual Ref<Dictionary> trailer() const noexcept = 0;
    // The interactive form, built on the first call from the catalog's `AcroForm`, a dictionary or a
    // reference to one, and the same at each later call, with the same code. Null with `ErrNoEntry` when
    // there is no such entry, with `ErrBadCast` when it leads to no dictionary; with `ErrFormCreate` a
    // form of which only the fields in front of the first failure are there. Null with `ErrNoRoot` when
    // there is no usable catalog; then the next call searches anew. A success leaves the slot as it was.
    // Null with `ErrNotAvailable` for a log sink that asks while the form is being built.
    //
    // What fails a form: an element of `Fields` or `Kids` that is no reference to a dictionary; an `FT`
    // other than Btn, Tx, Ch and Sig; and, to keep every form finite, `Kids` that lead back to a field
    // above, a tree of more than 500 levels, or one of more fields than 16 times the document's objects
    // plus 10,000. A child that several fields list is built for each of them.
    virtual Ref<Form> form() noexcept = 0;
    // The object with the id and generation of `ref`. Null with `ErrNotFound` when there is none, with
    // `ErrNullArgument` for null. Never logs.
    virtual Ref<Object> object(Ref<ObjectRef> ref) const noexcept = 0;
    // Writes the whole document as a new file, to a stream of 4-byte elements like those of `create`,
    // from where it stands; it is neither flushed nor closed. Objects go out in ascending order of
    // their ids and keep them; the table has one subsection, so it fits only when the ids are
    // consecutive and the first follows the subsection's first number by one. `Size` of the trailer is
    // brought up to date, in memory too. False with `ErrNullArgument`, `ErrInvalidArgument` (the width),
    // `ErrWriteVersion`, `ErrWriteObject` or `ErrWriteTrailer`; what was written then is of no use. The data
    // of streams is read through `streamData`, with what that does to later calls of it.
    virtual bool write(Ref<Interfaces::Stream> out) noexcept = 0;
    // The data of a stream, in 4-byte elements, one per byte. With `decoded` false the stored bytes; with
    // true those that come out of FlateDecode, the one filter known, or the stored ones when there is no
    // filter. Null with `ErrNullArgument`, `ErrOutOfRange` (the data would begin at or behind the end
    // of the file, or it comes from no file), `ErrInvalidArgument` (no dictionary), `ErrBadFilter`,
    // `ErrBadStreamLength`, `ErrConverterCreate` or `ErrStreamConvert`.
    //
    // Deliberate: data that the stream holds comes back as it is, whatever `decoded` says. The stream
    // holds its data once it was replaced, and from the first call on, that of a save included, when it
    // takes the view of its stored bytes. So a caller that needs the decoded form twice keeps the first
    // result. What is held is shared by all callers and stands where the last reader left it: `seek` it
    // to 0. The decoded form is the caller's alone and stands at 0.
    virtual Ref<Interfaces::Stripe> streamData(Ref<Stream> stream, bool decoded) noexcept = 0;
    // Replaces a stream's data by what `data`, of 1-byte elements, holds from its present place to its end,
    // and patches `Length`, also where streams share it. With `compress` the bytes go through the compressor
    // that `Filter` asks for, FlateDecode or none at all; without, they are stored as they are, encoded by
    // the caller already. `Filter` and its parameters are not changed. `data` is then back at its place. The
    // stream holds the new data from then on, and has changed. False with `ErrNullArgument`,
    // `ErrInvalidArgument` (the width of `data`), `ErrStreamNoDict`, `ErrStreamLength` or `ErrStreamConvert`,
    // and the stream as it was, but `data` where the reading ended.
    virtual bool setStreamData(Ref<Stream> stream, Ref<Interfaces::Stripe> data, bool compress) noexcept = 0;
    // Copies the stored data of every stream that is still a view of the file into memory, a byte for
    // each of the file's where the stripe gives them (`Interfaces::ByteReading`) and else 4, so that the
    // file may be overwritten or go away. No change of the document. A stream whose data can't be had is
    // passed over; its code stays in the slot. False with `ErrNoResource`, `ErrInvalidArgument` or
    // `ErrOutOfRange`; the streams before the failing one are copied, and the call can be repeated.
    virtual bool cacheStreams() noexcept = 0;
    // Whether the document differs from what was opened: objects were added, or the value of some
    // object reports a change; what lies behind an array doesn't count. Neither a save nor the reading of
    // stream data is a change, and a save resets nothing.
    virtual bool changed() const noexcept = 0;
    // Puts the content of pages of `foreign` beneath that of pages of this document. Pages are those of
    // `getPages`, on both sides. `Contents` of each page becomes a new array: references to copies of the
    // foreign page's content streams, then what was there. Nothing stands around the foreign content: it
    // runs in the page's coordinates, and the graphics state that it leaves stays in force. The version
    // becomes the greater of the two. The modes of the first foreign page look at no other, and leave a
    // line of level 1 when there are more; all others want `Contents` on every foreign page, also on one
    // that no page is there for, and add its streams as objects that nothing refers to. An unknown `mode`
    // does the same and changes no page. True without any change when this document has no pages, once
    // the foreign pages were found to be dictionaries.
    //
    // Resources: those of the foreign page are merged into the page's own dictionary, after those of the
    // root of this document's page tree; a page without gets one. If the foreign page has none, those of
    // the root of its tree go into the root of this one's, where only pages without `Resources` see
    // them. No name is changed: one that stands in any category of the page's resources already must
    // stand in the same one with an equal value, and equal references count as equal values whatever
    // they lead to; else the call fails. A dictionary that pages share is changed for all of them. Of a
    // category that is an array the page's stays as it is, and arrives empty where there was none; it is
    // the array to merge in, of `foreign` or of this document's root, that takes up the elements that it
    // lacks. For the rest `foreign` is only read, its stream data as by `streamData`. It may be this
    // document, and it may be closed afterwards.
    //
    // Cost: each page gets copies of its own of all that the foreign page's resources refer to, and an
    // object that is referred to twice is copied twice; references that lead back to an object on their
    // own way fail the call. In one call content streams are copied once, and stream bytes, one for each
    // stored one or 4 as `cacheStreams` tells, are held once however often their stream was copied. Time
    // grows with the copies and, for each page, with the number of names in its resources, and with the
    // product of the lengths where arrays meet. A file made for it can bring any number of copies, each
    // object referring twice to the next; and values that nest close to the 500 levels may nest deeper than
    // that where they are put, so that what is saved can't be opened again.
    //
    // False with a code, by what failed, in the order of the work:
    // - reading, which changes nothing: `ErrNullArgument`; 0x706 for the foreign page list, 0x100 above the
    //   code of `getPages`; `ErrForeignPage` for a foreign document without pages or a foreign page
    //   without `Contents`, `ErrForeignContent` for a foreign page that is no dictionary or whose
    //   `Contents` are unusable; `ErrBadPages` for the root of this page tree;
    // - resources: `ErrBadContents` for a page or resources that can't be had, `ErrNoResource` for a merge
    //   that failed, `ErrBadPages` for the root of a page tree. All merges up to then stay, a new empty
    //   dictionary and what a failing merge had done included, and so do the objects that they added;
    // - content streams: `ErrForeignStreamData` or `ErrForeignStreamAdd`. The copies of content streams
    //   are removed again; the objects that their dictionaries refer to, and all merges, stay;
    // - pages: `ErrNoResource`. The pages before get their `Contents` back, up to the first one that had
    //   none, which can't be brought back to that, and but for one that is listed twice; merges and all
    //   added objects stay.
    // Ids that were given out are not used again, and a document with added objects has changed.
    virtual bool addBackground(Ref<Document> foreign, BackgroundMode mode) noexcept = 0;
    // Brings the stored data of every stream to Flate or to none, with `Filter` and `Length`; all other
    // keys stay, decode parameters too. A stream whose filter is no name is left alone. Deliberate: one
    // with another filter name counts as uncompressed, so that on the way to Flate it is compressed as it
    // stands and loses that name. The data is read from where it stands, and a save leaves it at its end:
    // after one, `seek` what `streamData` gives to 0. False with `ErrInvalidArgument` for `Unknown`, or with
    // `ErrNoValue`, `ErrStreamNoDict`, `ErrStreamLength`, `ErrStreamConvert` or `ErrFilterUpdate`; all streams
    // then have their old form, but for the `Filter` of the failing one, which may be the new one beside the
    // old data, and that stands where its reading ended. Those that had been converted report no change,
    // even if they had before. Streams must not share a `Length`: the new one of the first is the amount that
    // is read of the second, whose data may be cut, and after a failure it is what the last of them found.
    virtual bool recompress(Compression target) noexcept = 0;

    // The object of the trailer's `Root`, of type Catalog. Null with `ErrNoTrailerDict`, `ErrNoRootRef`,
    // `ErrNoRoot` or `ErrBadCatalog`.
    Ref<Object> getCatalog() const noexcept;
    // The object of the catalog's `Pages`, of type Pages. Null with `ErrNoRoot`, `ErrBadCatalog` or
    // `ErrBadPages`.
    Ref<Object> getPageCatalog() const noexcept;
    // The objects of the `Kids` of the root of the page tree, in order. Deliberately flat: of a tree of
    // several levels these are its intermediate nodes. Empty with `ErrBadPages` on any failure, and
    // without a code when there are no pages; set the slot to 0 before to tell them apart.
    StackVector<Ref<Object>> getPages() const noexcept;
    // The value itself, or what it refers to, as a dictionary; one reference is followed, not two. Null
    // with `ErrNullArgument`, `ErrUnresolved`, `ErrBadObject` or `ErrBadCast`.
    Ref<Dictionary> valueAsDict(Ref<Value> value) const noexcept;
};

} // namespace Libraries::Files::PDF
