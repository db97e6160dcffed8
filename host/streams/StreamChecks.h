#pragma once

#include <document/Document.h>
#include <values/Object.h>
#include <values/Stream.h>

#include <optional>
#include <utility>

// What to check before the data of a stream is changed, since the library doesn't.
namespace Host {

namespace PDF = Libraries::Files::PDF;

// The value under a key of the stream's dictionary, references not followed; null when there is none.
EXPORTED Ref<PDF::Value> entryOf(const PDF::Stream& stream, const char* key) noexcept;
// Whether the stream has parameters for its filter: an entry DecodeParms, or its short form DP, that is not
// null. They say how to interpret what the filter decodes, so new data has to fit them.
EXPORTED bool hasDecodeParameters(const PDF::Stream& stream) noexcept;
// Id and generation of the object that holds the stream's Length; none when it is not a reference.
EXPORTED std::optional<std::pair<std::uint32_t, std::uint32_t>> lengthReferenceOf(
    const PDF::Stream& stream) noexcept;
// The first other stream whose Length is the same object; null when there is none. New data for the one
// stream changes that Length, and so cuts or extends the data of the other.
EXPORTED Ref<PDF::Object> sharerOfLength(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream) noexcept;

} // namespace Host
