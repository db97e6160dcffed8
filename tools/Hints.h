#pragma once

#include <host/base/Result.h>
#include <host/losses/PartialMarks.h>
#include <platform/Error.h>

#include <string>

namespace Tools {

// What stands behind a refusal, in its line: what people may do about it.

// Behind that of a value of a field.
constexpr const char* fieldHint = "; files-pdf-fields prints the names of fields and what they take";
// Behind what saving loses.
constexpr const char* lossesHint = "; files-pdf-inspect --losses FILE shows where";

// The refusal of an opening. A file that can't be read at all has no code, and no hint; one that doesn't begin as a
// PDF file is most often none.
inline Host::Refusal withOpeningHint(Host::Refusal refusal)
{
    if (refusal.code == ErrNoHeaderLine || refusal.code == ErrBadHeader || refusal.code == ErrBadLineEnding)
        refusal.words += "; docs/errors.md has the usual causes";
    else if (refusal.code >= ErrNoEofMarker && refusal.code <= ErrBadObject)
        refusal.words += "; written anew by another program it may open, see docs/errors.md";
    return refusal;
}

// Behind the refusal of a save; empty unless the option would let the document through.
inline const char* partialHint(const Host::Refusal& refusal)
{
    for (const auto& mark : Host::partialMarks)
        if (refusal.words == mark.words)
            return "; --partial saves what is there all the same";
    return "";
}

} // namespace Tools
