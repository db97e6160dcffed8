#pragma once

#include <platform/MemInStrm.h>

namespace Libraries::Files::PDF {

// The messages of those who copy.
struct CopyWording {
    const char* noStart; // the data can't be positioned
    const char* noData;  // it can't be read
    const char* noCopy;  // there is no stream of the copy
};

// All that a stripe of 4-byte elements holds, in memory: as bytes, if it gives them.
struct StreamCopy {
    Ref<MemInStrm> block; // null when there is none
    bool isNarrow = false;

    // A stripe of the elements for one user, who has a position of its own. All share the block.
    Ref<Interfaces::Stripe> elements() const noexcept;
};

// The copy; the stripe is left at its end. None with a line, and `ErrInvalidArgument`, `ErrOutOfRange` or
// `ErrNoResource`.
StreamCopy copyToMemory(Interfaces::Stripe& data, const CopyWording& wording) noexcept;

} // namespace Libraries::Files::PDF
