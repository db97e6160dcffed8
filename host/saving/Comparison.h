#pragma once

#include <document/Document.h>
#include <host/files/FileStripe.h>

#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Opens a file that `document` was just written to, and compares: version, line ending, trailer but for
// Size, and object by object id, generation and written text, stream data included. The refusal names the
// first object that is not read back as it was, and the cause; none when the file is the same document.
std::optional<Refusal> findDifference(
    const Ref<PDF::Document>& document, const Ref<FileStripe>& written) noexcept;

} // namespace Host
