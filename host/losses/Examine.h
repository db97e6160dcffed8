#pragma once

#include <host/files/FileStripe.h>
#include <host/losses/Losses.h>

namespace Host {

// What saving a file would do to it.
struct Examination {
    // What would lose its meaning in the new file: object by object as they are written, with the
    // comments before the first, then the rows of the table, the trailer, and objects that are not in
    // memory. Equal values that are only written differently, such as .5 and 0.5, are not a loss.
    Losses losses;
    // Of the new file, in bytes; 0 when it can't be written.
    std::uint64_t size = 0;
    // Why the new file can't have a table: gaps between the numbers of objects that are too large, or offsets of more
    // than ten digits. Empty when it can.
    std::string tableProblem;
};

// Reads a PDF file by the rules of the format, independently of the library's reader, and compares what it means
// with what saving would write. The file is opened for that, and nothing is changed. Time and memory grow with the
// file.
//
// Refused: what `open` refuses; a file that was changed meanwhile; and, with `Reason::LimitReached`, one whose objects
// overlap, or lead into the same blanks, so often that reading them takes more than `Limits::maxReadings` times its
// size, or whose losses take more than `Limits::texts`. `limitFactor` raises the latter.
EXPORTED Result<Examination> examine(const std::string& path, std::uint64_t limitFactor = 1) noexcept;
// The same for a file that is open. A document that was opened from it may be in use; its changes don't count.
EXPORTED Result<Examination> examine(const Ref<FileStripe>& file, std::uint64_t limitFactor = 1) noexcept;

} // namespace Host
