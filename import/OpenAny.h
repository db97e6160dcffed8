#pragma once

#include <import/Import.h>

namespace Import {

// What opens a file where the core doesn't: `open`, or `openIfInstalled` (import/Loader.h).
using Door = Host::Result<Imported> (*)(const Ref<Host::FileStripe>& file, const Options& options);

// Whether a file goes through the door.
enum class DoorUse {
    Automatic, // where the core refuses it, or would have only a part of it in memory
    Never,
    Always,
};

// A document, and the way that it came.
struct Opened {
    Host::OpenedFile opened;
    // Why it went through the door, for people: "cross-reference streams, object streams". Empty when it didn't.
    std::string why;
    // What was done to the file then; none when it didn't.
    std::optional<Report> report;
};

// Opens a PDF file by the core, and by the door where it is used. What was refused by both says so in one message.
EXPORTED Host::Result<Opened> openAny(
    Door door, const std::string& path, const Options& options = {}, DoorUse use = DoorUse::Automatic) noexcept;
// The same for a file that is open already.
EXPORTED Host::Result<Opened> openAny(Door door, const Ref<Host::FileStripe>& file, const Options& options = {},
    DoorUse use = DoorUse::Automatic) noexcept;

} // namespace Import
