#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Import {

// What an encrypted file lets those do who don't have its owner's password.
struct Permissions {
    bool isOwner; // the password was the owner's, who may do everything
    bool mayPrint;
    bool mayPrintWell; // in full resolution
    bool mayChange;    // contents, in any way that has no permission of its own
    bool mayAssemble;  // insert, turn and delete pages
    bool mayFill;      // fields of forms
    bool mayAnnotate;
    bool mayCopy; // texts and pictures
    bool mayReadAloud;
};

// Things of one kind, and where the first of them are.
struct Places {
    std::size_t count = 0;
    std::vector<std::string> names; // of the first hundred: "object 12, /Kids 3"
};

// What was done to a file so that the core could open it. What is not named here is as it was in the file.
struct Report {
    std::size_t tables = 0;        // cross-reference sections, in streams or not, that were joined
    std::size_t objectStreams = 0; // that were unpacked
    bool isDecrypted = false;
    std::optional<Permissions> permissions; // of a file that was encrypted
    // What libqpdf said, with what it said it about. Without repair these are only things that lose nothing.
    std::size_t warningCount = 0;
    std::vector<std::string> warnings; // the first hundred
    bool isRepaired = false;           // something was guessed
    // The file's version, such as "1.8", where the core has no such and took the nearest; else empty.
    std::string unknownVersion;
    Places rounded;    // numbers of more digits than the core holds, which became the nearest that it does
    Places emptyNames; // names without a character: as a value it became null, as a key it went with its value
    Places replaced;   // objects that were only a reference, which became what it leads to
};

} // namespace Import
