#include <import/OpenAny.h>

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/files/FileStructure.h>
#include <host/losses/PartialMarks.h>
#include <host/losses/ReadingLosses.h>

namespace Import {

namespace {

// Whether the core noted that it reads something otherwise than it is meant. Of a repeated key it keeps the last value,
// as libqpdf does.
bool isReadOtherwise(const Host::PDF::ReadingNotes& notes)
{
    for (std::size_t i = 0; i < Host::PDF::readingNoteCount; ++i)
        if (const auto note = Host::PDF::ReadingNote(i); note != Host::PDF::ReadingNote::RepeatedKey)
            if (notes.of(note).count != 0)
                return true;
    return false;
}

// Why a document that the core opened isn't all that the file has, or not as the file has it; empty when it is.
struct Shortcoming {
    std::string why;
    bool isPartial;
};

Shortcoming shortcomingOf(const Host::OpenedFile& opened)
{
    if (const Host::PartialMark* const mark = Host::findPartialMark(*opened.document->trailer()))
        return {mark->message, true};
    const Host::PDF::ReadingNotes notes = Host::PDF::readingNotes(opened.document);
    return {isReadOtherwise(notes) ? "parts that the core reads otherwise" : "", Host::isPartial(notes)};
}

Host::Result<Opened> openByDoor(
    Door door, const Ref<Host::FileStripe>& file, const Options& options, const std::string& why)
{
    Host::Result<Imported> imported = door(file, options);
    if (imported)
        return Opened{std::move(imported->opened), why, std::move(imported->report)};
    // Nothing more need be said of a password.
    const bool isEnough = why.empty() || imported.refusal().reason == Host::Reason::PasswordNeeded;
    return isEnough ? imported.refusal() : imported.refusal().withPrefix(why + "; ");
}

// The refusal of a file by the core, where its structure has these words: they say more than the rule that it breaks.
Host::Refusal refusedByCore(const Host::Refusal& refusal, const std::string& words)
{
    return words.empty()
        ? refusal
        : Host::Refusal{refusal.reason, "is not opened as it is stored: " + words, refusal.code};
}

} // namespace

Host::Result<Opened> openAny(Door door, const std::string& path, const Options& options, DoorUse use) noexcept
{
    const Host::Result<Ref<Host::FileStripe>> file = Host::FileStripe::open(path);
    return file ? openAny(door, *file, options, use) : Host::Result<Opened>(file.refusal());
}

Host::Result<Opened> openAny(Door door, const Ref<Host::FileStripe>& file, const Options& options, DoorUse use) noexcept
{
    if (!file || (!door && use != DoorUse::Never))
        return Host::codeRefusal(ErrNullArgument);
    const std::string words = Host::structureWords(Host::findStructure(*file));
    if (use == DoorUse::Always || (use == DoorUse::Automatic && !words.empty()))
        return openByDoor(door, file, options, words);
    Host::Result<Host::OpenedFile> opened = Host::open(file);
    const bool isFinal = use == DoorUse::Never || (!opened && opened.refusal().isUnusable());
    if (isFinal && !opened)
        return refusedByCore(opened.refusal(), words);
    if (isFinal)
        return Opened{std::move(*opened), {}, {}};
    const Shortcoming shortcoming = opened ? shortcomingOf(*opened) : Shortcoming{opened.refusal().message, true};
    if (shortcoming.why.empty())
        return Opened{std::move(*opened), {}, {}};
    Host::Result<Opened> imported = openByDoor(door, file, options, shortcoming.why);
    if (!imported && !shortcoming.isPartial)
        return Opened{std::move(*opened), {}, {}}; // all of it is there, and a save tells what isn't as it was meant
    if (!imported && !opened)
        return Host::Refusal{imported.refusal().reason, imported.refusal().message, opened.refusal().code};
    return imported;
}

} // namespace Import
