#pragma once

#include <host/base/Refusal.h>
#include <host/losses/Losses.h>
#include <values/Dictionary.h>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Entries of a trailer that say that what is in memory is not the whole file.
struct PartialMark {
    const char* key;
    LossKind kind;
    Reason reason;       // why a document that has it isn't saved
    const char* message; // the same in words
};
constexpr PartialMark partialMarks[] = {
    {"Prev", LossKind::EarlierRevision, Reason::Partial,
        "the document is the newest part of an updated file, and the older parts would be lost (Prev)"},
    {"XRefStm", LossKind::ObjectStream, Reason::Partial,
        "the document has more objects in streams, which would be lost (XRefStm)"},
    {"Encrypt", LossKind::Encryption, Reason::Encrypted,
        "the document is encrypted, and what is added to it would not be (Encrypt)"},
};

// The first mark that the trailer has, however its key is written; null when all of the file is in memory. An entry
// with the null value doesn't count.
EXPORTED const PartialMark* findPartialMark(const PDF::Dictionary& trailer) noexcept;
// Whether one of the marks says that the document is encrypted.
bool isEncrypted(const PDF::Dictionary& trailer) noexcept;

} // namespace Host
