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
    // Also converts data that loses the name of its filter.
    bool isForced = false;
};

// What became of a stream.
enum class StreamOutcome {
    Converted,
    Fitting,     // left alone: it already had the form
    OtherFilter, // left alone: its filter is not FlateDecode
    NoName,      // left alone: its filter is not a name, but an array of filters, for instance
};

// A stream, and what became of it.
struct RecompressedStream {
    Ref<PDF::Object> object; // whose value is the stream
    StreamOutcome outcome;   // what became of it
    // The name of the filter that the stream had, as names are written; empty when it had none.
    std::string filter;
    // It has decode parameters, which stay in any case. Without the filter they no longer apply, and with a
    // new one they take effect.
    bool hasDecodeParameters;
    // Of the stored data, in bytes; 0 when the stream was left alone.
    std::uint64_t sizeBefore;
    std::uint64_t sizeAfter;
};

// Converts the stored data of every stream to Flate or to none by `Document::recompress`, whatever the position of
// data that is held, and reports what became of each stream, in the order of the document's objects.
//
// Refused before anything is done: any other target (`ErrInvalidArgument`); a stream whose data can't be read, with
// the code of `Document::streamData`; with `Reason::Lossy` (`ErrBadFilter`) and the streams in the message, on the way
// to Flate and unless forced, streams with a filter of another name, which would be lost; with `Reason::Conflict`
// (`ErrStreamLength`) a stream that shares its Length with another one, whose data would be cut. Damaged data is found
// on the way, with the codes of `Document::recompress`: then every stream has its old data, Length and Filter, and
// those that had been converted report no change, even if they had before.
EXPORTED Result<std::vector<RecompressedStream>> recompress(const Ref<PDF::Document>& document,
    PDF::Compression target, const RecompressOptions& options = {}) noexcept;

} // namespace Host
