#pragma once

#include <host/files/FileBytes.h>

namespace Host {

// A file to be read as a stripe. It reads through buffers of its own and doesn't map the file: one that
// is cut short gives failed reads. The file stays open, and so what it holds stays there when its name
// is given to another file. Size and positions are in bytes, whatever the width of an element.
template <class Element>
class EXPORTED FileStripeOf final : public StripeOver<FileBytes, Element> {
public:
    // The refusal says that the file is unreadable: it isn't there, may not be read, or is no regular
    // file.
    static Result<Ref<FileStripeOf>> open(const std::string& path) noexcept;

    // Of a file that is open already.
    explicit FileStripeOf(FileBytes bytes) noexcept : StripeOver<FileBytes, Element>(std::move(bytes)) {}

    // Whether the open file still is as it was at the opening: by its device and inode, size, and times.
    // A write that follows the opening within one tick of the system's clock, some milliseconds, and
    // keeps the size can't be told.
    bool isUnchanged() const noexcept { return this->bytes().isUnchanged(); }
    // What was wrong with the first read that failed, an unreadable file; none as long as none has. Tells a
    // file that can't be read from one that is no good.
    std::optional<Refusal> readFailure() const noexcept { return this->bytes().readFailure(); }
};

extern template class FileStripeOf<std::uint32_t>;
extern template class FileStripeOf<std::uint8_t>;

// A PDF file for `Document::create`: elements of 4 bytes, one per byte, its Windows-1252 code point.
using FileStripe = FileStripeOf<std::uint32_t>;
// Plain bytes, as data to be put into a stream.
using ByteFileStripe = FileStripeOf<std::uint8_t>;

} // namespace Host
