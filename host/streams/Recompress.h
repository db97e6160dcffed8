#pragma once

#include <document/Document.h>
#include <host/base/Result.h>
#include <values/Compression.h>
#include <values/Object.h>

#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// How `recompress` decides.
struct RecompressOptions {
    // Converts by `Document::recompress`, which knows no filter but FlateDecode alone: data of another name is
    // compressed as it is and loses that name, and decode parameters stay, whether they still fit or not.
    bool isForced = false;
    // Raises the limits of what all streams together may take (`Limits::storedData`, `decodedData`).
    std::uint64_t limitFactor = 1;
};

// What became of a stream.
enum class StreamOutcome {
    Converted,
    Fitting,     // left alone: it already had the form
    OtherFilter, // left alone: it has a filter that can't be undone, such as that of a JPEG image
    NoName,      // left alone: what it says of its filters can't be used
};

// A stream, and what became of it.
struct RecompressedStream {
    Ref<PDF::Object> object; // whose value is the stream
    StreamOutcome outcome;   // what became of it
    // The name of the filter that the stream had, or of all of them with blanks between; empty when it had none.
    std::string filter;
    // It had decode parameters. They are undone with the data, unless forced: then they stay and, without the filter,
    // don't apply, or, with a new one, take effect.
    bool hasDecodeParameters;
    // Of the stored data, in bytes; 0 when the stream was left alone.
    std::uint64_t sizeBefore;
    std::uint64_t sizeAfter;
};

// Converts the data of every stream to Flate or to none, and reports what became of each stream, in the order of the
// document's objects. All filters that `decodeStream` knows are undone, with their parameters, whatever the position of
// data that is held; streams with others are left alone.
//
// Refused, and nothing is changed: any other target (`ErrInvalidArgument`); a stream whose data can't be read or has no
// usable Length, with the code of `Document::streamData` or `ErrStreamLength`; damaged data (`ErrStreamConvert`); with
// `Reason::LimitReached` more data, or decoded data, of all streams together than the limits allow; with `Reason::Conflict` (`ErrStreamLength`) a stream
// that shares its Length with another one, whose data would be cut. Forced, damaged data is found on the way, with the
// codes of `Document::recompress`: then every stream has its old data, Length and Filter, and those that had been
// converted report no change, even if they had before.
EXPORTED Result<std::vector<RecompressedStream>> recompress(const Ref<PDF::Document>& document,
    PDF::Compression target, const RecompressOptions& options = {}) noexcept;

} // namespace Host
