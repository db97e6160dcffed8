#pragma once

#include <host/saving/Save.h>
#include <tools/Opening.h>

namespace Tools {

// The options of every program that saves, and what they say.
OptionGroup saveOptions();
Host::SaveOptions saveOptionsOf(const CommandLine& line);

// Why a strict save refuses the file: what saving or importing it loses, or why that can't be told.
std::optional<Host::Refusal> lossesOf(const Opened& opened);
// Why the content of a file that goes into a new one is refused by these options.
std::optional<Host::Refusal> refuseContent(const Opened& opened, const Host::SaveOptions& options);

// How the new file is stored.
struct StoreOptions {
    bool isCompact = false;
    bool isDecrypted = false; // what was encrypted
    bool isEncryptedAsBefore = false;
};
StoreOptions storeOptionsOf(const CommandLine& line);

// Saves a document, stored as the options say. Refused, with `Reason::Encrypted`, when it came from an encrypted file
// and they don't say what becomes of that.
Host::Result<Host::Saved> save(
    const Opened& opened, const std::string& path, Host::SaveOptions options, const StoreOptions& storage);

// How a program saves: by its options, with a bar, and with a line for whatever goes wrong. The command line and the
// console live longer.
class Saving {
public:
    Saving(const CommandLine& line, const Console& console);

    // Looks at a file whose content goes into the new one, or at one that will be detached before it is saved. Its
    // refusal is the end, and the exit status comes back.
    std::optional<int> checkContent(const Opened& opened, const std::string& in) const;
    // Saves what was opened from `in` as `out`, "-" for standard output, and gives the exit status.
    int save(const Opened& opened, const std::string& in, const std::string& out) const;

private:
    int saveToOutput(const Opened& opened, const std::string& in, const Host::SaveOptions& options) const;
    int refuse(const Opened& opened, const std::string& in, const std::string& out, const Host::Refusal& cause) const;

    const Host::SaveOptions _options;
    const StoreOptions _storage;
    const Console& _console;
};

} // namespace Tools
