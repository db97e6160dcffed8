#include <tools/Hints.h>

#include <host/losses/PartialMarks.h>
#include <platform/Error.h>

namespace Tools {

Host::Refusal withOpeningHint(Host::Refusal refusal)
{
    if (refusal.code == ErrNoHeaderLine || refusal.code == ErrBadHeader || refusal.code == ErrBadLineEnding)
        refusal.message += "; docs/errors.md has the usual causes";
    else if (refusal.code >= ErrNoEofMarker && refusal.code <= ErrBadObject)
        refusal.message += "; rewritten by another program it may open, see docs/errors.md";
    return refusal;
}

const char* partialHint(const Host::Refusal& refusal)
{
    for (const auto& mark : Host::partialMarks)
        if (refusal.message == mark.words)
            return "; --partial saves what is there anyway";
    return "";
}

} // namespace Tools
