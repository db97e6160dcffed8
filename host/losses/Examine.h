#pragma once

#include <host/files/FileStripe.h>
#include <host/losses/Losses.h>

namespace Host {

// What saving a file would do to it.
struct Examination {
    // What the new file would not give back as it was meant: object by object as they are written, with the
    // comments in front of the first, then the rows of the table, the trailer, and objects that are not in
    // memory. Equal values that are only written another way, as .5 and 0.5, are no loss.
    Losses losses;
    // Of the new file, in bytes; 0 when it can't be written.
    std::uint64_t size = 0;
    // Why the new file's table would not fit its objects: numbers that don't follow each other from the
    // table's first on, or offsets of more than ten digits. Empty when it would.
    std::string tableProblem;
};

// Reads a PDF file by the rules of the format, beside the library and apart from it, and compares what it means
// with what saving would write. The file is opened for that, and nothing is changed. All of it takes time and
// memory that grow with the file.
//
// Refused: what `open` refuses; a file that changed meanwhile; and one whose objects overlap, or lead into blanks, so
// often that reading them takes more than 16 times its size.
EXPORTED Result<Examination> examine(const std::string& path) noexcept;
// The same for a file that is open. A document that was opened from it may be in use; its changes don't count.
EXPORTED Result<Examination> examine(const Ref<FileStripe>& file) noexcept;

} // namespace Host
