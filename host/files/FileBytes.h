#pragma once

#include <host/base/Result.h>
#include <host/files/Descriptor.h>
#include <host/files/StripeOver.h>

#include <sys/stat.h>

#include <memory>
#include <optional>

namespace Host {

// The bytes of an open file, read a block at a time where they are asked for. The size is that at the
// opening: what is appended later is not seen, and where bytes are gone the reading fails.
class EXPORTED FileBytes {
public:
    // A regular file; anything else is refused without waiting for it.
    static Result<FileBytes> open(const std::string& path) noexcept;
    // The file of a descriptor that is open for reading.
    static Result<FileBytes> adopt(Descriptor file) noexcept;

    // That of the file at the opening, in bytes.
    std::uint64_t size() const noexcept { return static_cast<std::uint64_t>(_opened.st_size); }
    // Puts the window over the block that holds `position`, which must be below the size. False with
    // `ErrNoResource`, and an empty window, when the system can't read it or the file ends before it.
    bool load(std::uint64_t position, ByteRun& window) noexcept;
    // Whether the file is as it was opened.
    bool isUnchanged() const noexcept;
    // The first read that failed; none as long as all succeed.
    const std::optional<Refusal>& readFailure() const noexcept { return _readFailure; }

private:
    FileBytes(Descriptor file, const struct stat& opened) noexcept;

    Descriptor _file;
    struct stat _opened;
    std::unique_ptr<std::uint8_t[]> _block;
    std::optional<Refusal> _readFailure;
};

} // namespace Host
