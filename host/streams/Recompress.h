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
    // Converts as well what loses the name of its filter.
    bool isForced = false;
};

// What became of a stream.
enum class StreamOutcome {
    Converted,
    Fitting,     // left alone: it had the form already
    OtherFilter, // left alone: its filter has another name than FlateDecode
    NoName,      // left alone: its filter is no name, as an array of filters is none
};

// A stream, and what became of it.
struct RecompressedStream {
    Ref<PDF::Object> object; // whose value is the stream
    StreamOutcome outcome;   // what became of it
    // The name of the filter that the stream had, as names are written; empty when it had none.
    std::string filter;
    // It has decode parameters, which stay in any case. Without the filter they fit no more, and with a
    // new one they come into force.
    bool hasDecodeParameters;
    // Of the stored data, in bytes; 0 when the stream was left alone.
    std::uint64_t sizeBefore;
    std::uint64_t sizeAfter;
};

// Brings the stored data of every stream to Flate or to none by `Document::recompress`, wherever the data
// held stands, and says of every stream what became of it, in the order of the document's objects.
//
// It looks first. Refused beforehand, and nothing done: any other target, with `ErrInvalidArgument`; on the
// way to Flate, unless forced, streams with a filter of another name, a JPEG image say, with `ErrBadFilter`
// and the streams and filters in the words: the library would compress their data as it stands and forget
// the filter; a stream to be converted that shares its Length with another one, with `ErrStreamLength`: the
// Length fits one of the two at most, and data would be cut; a stream whose data can't be had, with the
// code of `Document::streamData`. Damaged data is found on the way, with the codes of
// `Document::recompress`: then every stream has its old data, Length and Filter, and those that had been
// converted report no change, even if they had before.
EXPORTED Result<std::vector<RecompressedStream>> recompress(const Ref<PDF::Document>& document,
    PDF::Compression target, const RecompressOptions& options = {}) noexcept;

} // namespace Host
