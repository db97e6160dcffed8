#pragma once

#include <document/Document.h>
#include <host/base/Result.h>
#include <values/Stream.h>

#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// The stored data of a stream in one piece, whose position is kept where it is held. Refused with the codes of
// `Document::streamData`, and with `ErrStreamConvert` when it can't be read or has elements that are no bytes.
Result<std::vector<std::uint8_t>> storedBytes(
    const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream) noexcept;

} // namespace Host
