#include <tools/Hints.h>

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

const char* savingHint(const Host::Refusal& refusal)
{
    if (refusal.reason == Host::Reason::Partial || refusal.reason == Host::Reason::Encrypted)
        return "; --partial saves what is there anyway";
    return refusal.reason == Host::Reason::Lossy ? "; --lossy saves it as it was read" : "";
}

} // namespace Tools
