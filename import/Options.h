#pragma once

#include <cstdint>
#include <string>

namespace Import {

// How a file is opened.
struct Options {
    // Of the owner or the user, in UTF-8. Files that anybody may open need none, and open with any.
    std::string password = {};
    // Lets libqpdf guess what a damaged file was meant to say. The report tells what it did.
    bool isRepairAllowed = false;
    // What the decoded object streams together, and the image, may each take, in bytes. 0 is 16 times the file, and
    // 256 MiB where that is less.
    std::uint64_t limit = 0;
};

} // namespace Import
