#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Host {

// What kept an operation from being done, for programs to branch on. What isn't listed by its own name is
// `SystemFailure`.
enum class Reason : std::uint8_t {
    // The call
    WrongArgument, // what was given can't be used, or not at this time
    Missing,       // there is no such object, entry or field
    Cancelled,     // the application's own function ended the work

    // What was read
    Unreadable,       // the system can't read the file, or it is not a regular file
    ChangedMeanwhile, // the file was changed since it was opened
    BrokenRule,       // a rule of the format is broken; the code says which, where there is one for it
    Damaged,          // the data of a stream can't be decoded
    Unsupported,      // the format has it and the library doesn't, such as a filter other than Flate
    Encrypted,        // the document is encrypted, and can't be used like this without being decrypted
    PasswordNeeded,   // the file is encrypted, and none of its passwords was given
    LimitReached,     // a limit of the library's (platform/Limits.h)

    // What would become of it
    Partial,    // only a part of the document is in memory, and the rest would be lost
    Lossy,      // something that is in memory, or was in the file, would be lost
    Conflict,   // two things don't fit together: names of resources, a Length that streams share
    Unwritable, // something in the document has no form in a file
    Difference, // the new file would not be read back as it was written

    // The system
    UnusableTarget, // nothing can be written at that place
    OutOfMemory,    // more memory is needed than there is
    OutOfSpace,     // the disk is full, or a quota or a limit of file sizes is reached
    SystemFailure,  // anything else that the system was asked for and didn't give
};

// Why something could not be done.
struct Refusal {
    // For programs.
    Reason reason = Reason::SystemFailure;
    // What is wrong, for people: one line of UTF-8, without the name of the file and without the code.
    std::string message;
    // The library's code, which `errorWords` puts into words; 0 when there is none.
    std::uint32_t code = 0;

    // Whether the system kept the work from being done: a file can't be read, so nothing is known about its contents,
    // or not be written, or there is no room. Programs end with status 2 then, and with 1 where the document, or what
    // is asked of it, is refused.
    bool isUnusable() const noexcept
    {
        using enum Reason;
        return reason == Unreadable || reason == UnusableTarget || reason == OutOfMemory || reason == OutOfSpace
            || reason == SystemFailure;
    }
    // The same, its message after `prefix`, which says where.
    Refusal withPrefix(std::string_view prefix) const noexcept
    {
        return {reason, std::string(prefix).append(message), code};
    }
};

// The refusal of a file that was changed since it was opened.
inline Refusal changedMeanwhile() noexcept
{
    return {Reason::ChangedMeanwhile, "was changed since it was opened"};
}

} // namespace Host
