#pragma once

#include <document/Document.h>
#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <values/Stream.h>

#include <functional>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Which data of a stream.
enum class StreamForm {
    Stored,  // as the data is in the file
    Decoded, // as its filters give it; as stored when the stream has none
};

// Gets the bytes of a stream, some at a time; false ends the copying.
using ByteSink = std::function<bool(const std::uint8_t* bytes, std::size_t count)>;

// Passes the data of a stream to `sink`, in a fixed amount of memory, and gives its size in bytes. It may
// be called at any time and any number of times, even when the library already holds the stream's stored
// form; data that was replaced in memory counts as stored, too. The position of data that is held is kept.
//
// Decoding supports what `decodeStream` does (host/streams/FilterChain.h); through anything but FlateDecode alone the
// data is decoded as a whole first. What follows compressed data is left out. Refused with `ErrBadFilter` for any other
// filter and for parameters that can't be, with `Reason::LimitReached` (`ErrOutOfRange`), with `ErrStreamConvert` for data that is damaged, truncated, or can't be read, with the codes of
// `Document::streamData`, and with `Reason::Cancelled` when the sink ends the copying. The sink may have got a
// part of the data by then.
EXPORTED Result<std::uint64_t> copyStream(const Ref<PDF::Document>& document,
    const Ref<PDF::Stream>& stream, StreamForm form, const ByteSink& sink) noexcept;

// The same within a budget, for operations that copy many streams: refused with `Reason::LimitReached` where the budget
// ends.
EXPORTED Result<std::uint64_t> copyStream(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, StreamForm form,
    Budget& budget, const ByteSink& sink) noexcept;

// The decoded data of a stream in one piece, by the same rules.
EXPORTED Result<std::vector<std::uint8_t>> decoded(const Ref<PDF::Document>& document,
    const Ref<PDF::Stream>& stream) noexcept;

} // namespace Host
