#pragma once

#include <host/files/FileBytes.h>

namespace Host {

// A file to be read as a stripe. It reads through buffers of its own and doesn't map the file: one that
// is truncated gives failed reads. The file stays open, so its contents remain when its name
// is given to another file. Size and positions are in bytes, whatever the width of an element.
template <class Element>
class EXPORTED FileStripeOf final : public StripeOver<FileBytes, Element> {
public:
    // Refused with `Reason::Unreadable`: a file that doesn't exist, may not be read, or is not a regular file.
    static Result<Ref<FileStripeOf>> open(const std::string& path) noexcept;

    // Of a file that is open already.
    explicit FileStripeOf(FileBytes bytes) noexcept : StripeOver<FileBytes, Element>(std::move(bytes)) {}

    // Whether the open file is still as it was at the opening: by its device and inode, size, and times.
    // A write that follows the opening within one tick of the system's clock, some milliseconds, and
    // keeps the size can't be detected.
    bool isUnchanged() const noexcept { return this->bytes().isUnchanged(); }
    // The first read that failed, with `Reason::Unreadable`; none as long as all succeed. Distinguishes a file
    // that can't be read from one that is broken.
    std::optional<Refusal> readFailure() const noexcept { return this->bytes().readFailure(); }
};

extern template class FileStripeOf<std::uint32_t>;
extern template class FileStripeOf<std::uint8_t>;

// A PDF file for `Document::create`: elements of 4 bytes, one per byte, its Windows-1252 code point.
using FileStripe = FileStripeOf<std::uint32_t>;
// Plain bytes, as data to be put into a stream.
using ByteFileStripe = FileStripeOf<std::uint8_t>;

} // namespace Host
