#pragma once

#include <document/ReadingNotes.h>
#include <platform/Export.h>

#include <string>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Whether what the reading of a file noted means that only a part of it is in memory.
EXPORTED bool isPartial(const PDF::ReadingNotes& notes) noexcept;
// What a save would lose by what the reading of the file took apart otherwise than the format, in words with counts
// and places; empty when that is nothing. A string that ended at another bracket isn't lost: it is written as it was.
EXPORTED std::string lossesOfReading(const PDF::ReadingNotes& notes) noexcept;

} // namespace Host
