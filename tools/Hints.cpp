#include <tools/Hints.h>

#include <platform/Error.h>

#include <filesystem>

namespace Tools {

namespace {

// Where a guide is: beside the program, where both are installed, or else in the sources.
std::string guide(const char* name)
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto installed = program.parent_path().parent_path() / "share/doc/files-pdf" / name;
    return std::filesystem::exists(installed, error) ? installed.string() : std::string("docs/") + name;
}

} // namespace

Host::Refusal withOpeningHint(Host::Refusal refusal)
{
    if (refusal.code == ErrNoHeaderLine || refusal.code == ErrBadHeader || refusal.code == ErrBadLineEnding)
        refusal.message += "; " + guide("errors.md") + " has the usual causes";
    else if (refusal.code >= ErrNoEofMarker && refusal.code <= ErrBadObject)
        refusal.message += "; rewritten by another program it may open, see " + guide("errors.md");
    return refusal;
}

const char* savingHint(const Host::Refusal& refusal)
{
    if (refusal.reason == Host::Reason::Partial || refusal.reason == Host::Reason::Encrypted)
        return "; --partial saves what is there anyway";
    return refusal.reason == Host::Reason::Lossy ? "; --lossy saves it as it was read" : "";
}

} // namespace Tools
