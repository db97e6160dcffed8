#pragma once

#include <host/saving/Save.h>

namespace Import {

// How a document is stored where it isn't a plain classic file.
struct Storage {
    // Objects in compressed streams, and the table in one, too: a form that came so grows to three times the size
    // otherwise. Data of other streams stays as it is stored.
    bool isCompact = false;
    // The encrypted file whose cipher, passwords and permissions the new one gets; null for a file that anybody can
    // read.
    Ref<Host::FileStripe> encryptedLike = {};
    std::string password = {}; // one of its passwords, in UTF-8
};

// Saves a document as `Host::save` does, and stored like this. What that writes and compares with the document goes
// through libqpdf into a second file, which is opened as `open` does and compared from the trailer on, and with what
// nothing refers to, before it replaces the target. Objects get other ids, and a version below 1.5 becomes that.
// Refused besides with `Reason::Difference` when the second file doesn't say the same, with `Reason::PasswordNeeded`
// when the password isn't that of the encrypted file, and with `Reason::WrongArgument` when that isn't encrypted.
EXPORTED Host::Result<Host::Saved> save(const Host::OpenedFile& opened, const std::string& path, const Storage& storage,
    const Host::SaveOptions& options = {}) noexcept;

} // namespace Import
