#pragma once

#include <host/base/Result.h>

namespace Tools {

// What follows the message of a refusal, in its line: what people may do about it.

// After that of a value of a field.
constexpr const char* fieldHint = "; files-pdf-fields prints the names of fields and what they take";
// After what saving loses.
constexpr const char* lossesHint = "; files-pdf-inspect --losses FILE shows where";

// The refusal of an opening. A file that can't be read at all has no code, and no hint; one that doesn't begin as a
// PDF file is most often none.
Host::Refusal withOpeningHint(Host::Refusal refusal);
// After the refusal of a save that isn't strict; empty unless --partial or --lossy would let the document through.
const char* savingHint(const Host::Refusal& refusal);

} // namespace Tools
