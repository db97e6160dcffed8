#pragma once

#include <platform/MemInStrm.h>

namespace Libraries::Files::PDF {

// What the lines call the data that is copied, and the copy.
struct CopyWording {
    const char* data;
    const char* copy;
};

// A copy of all that the stripe holds, as bytes; the stripe is left at its end. Null with a line, and
// `ErrInvalidArgument`, `ErrOutOfRange` or `ErrNoResource`.
Ref<MemInStrm> copyToMemory(Interfaces::Stripe& data, const CopyWording& wording) noexcept;

} // namespace Libraries::Files::PDF
