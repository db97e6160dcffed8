#pragma once

#include <host/base/Refusal.h>
#include <host/losses/Losses.h>

namespace Host {

// Entries of a trailer that say that what is in memory is not the whole file.
constexpr struct {
    const char* key;
    LossKind kind;
    Reason reason;       // why a document that has it isn't saved
    const char* message; // the same in words
} partialMarks[] = {
    {"Prev", LossKind::EarlierRevision, Reason::Partial,
        "the document is the newest part of an updated file, and the older parts would be lost (Prev)"},
    {"XRefStm", LossKind::ObjectStream, Reason::Partial,
        "the document has further objects in streams, and they would be lost (XRefStm)"},
    {"Encrypt", LossKind::Encryption, Reason::Encrypted,
        "the document is encrypted, and what is changed in it would lie beside ciphers (Encrypt)"},
};

} // namespace Host
