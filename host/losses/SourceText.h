#pragma once

#include <host/files/FileStripe.h>

#include <optional>
#include <string>
#include <vector>

namespace Host {

// The bytes of a text, read from some position on: of a file, or of a text in memory. What was
// read since the last `moveTo` is held.
class SourceText {
public:
    static constexpr int end = -1;

    explicit SourceText(Ref<FileStripe> file) noexcept : _file(std::move(file)) {}
    explicit SourceText(std::string text) noexcept : _held(std::move(text)) {}

    // Releases what is held, and goes on from `position`. Only for a file.
    void moveTo(std::uint64_t position) noexcept;
    // The byte at a position at or after the last one moved to; `end` after the last byte, and where the
    // file can't be read, as its `readFailure` says.
    int at(std::uint64_t position) noexcept;
    // Releases what is held from `from` to before `to`, all but a beginning that a loss may show. Blanks are there
    // then. A file may have any number of blanks and comments between two values, and none of them on the disk.
    void skip(std::uint64_t from, std::uint64_t to) noexcept;
    bool isAt(std::uint64_t position, std::string_view text) noexcept;
    // The bytes from `begin` to before `limit` as far as they were read, at most `maxLength` of them.
    std::string slice(std::uint64_t begin, std::uint64_t limit, std::size_t maxLength) const noexcept;
    // How many bytes of the file were read so far, those that were read again included. Whoever follows what a
    // file says from place to place gives up at a multiple of its size.
    std::uint64_t bytesRead() const noexcept { return _bytesRead; }
    // How many bytes are held.
    std::size_t held() const noexcept { return _held.size(); }
    // In bytes.
    std::uint64_t size() const noexcept { return _file ? _file->size() : _held.size(); }

private:
    // A range that was skipped, and how much was skipped up to its end.
    struct Gap {
        std::uint64_t begin;
        std::uint64_t end;
        std::uint64_t total;
    };

    bool readOn() noexcept;
    // Where a position is in what is held; none in a gap.
    std::optional<std::uint64_t> placeOf(std::uint64_t position) const noexcept;
    std::uint64_t skipped() const noexcept { return _gaps.empty() ? 0 : _gaps.back().total; }

    const Ref<FileStripe> _file; // null for a text in memory
    std::uint64_t _start = 0;    // of what is held
    std::string _held;
    std::vector<Gap> _gaps; // in it, in order
    std::uint64_t _bytesRead = 0;
    std::vector<std::uint32_t> _block; // kept for its memory alone
};

} // namespace Host
