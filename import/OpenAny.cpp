#include <import/OpenAny.h>

#include <host/base/ErrorWords.h>
#include <host/files/FileStructure.h>

namespace Import {

namespace {

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
    if (opened)
        return Opened{std::move(*opened), {}, {}};
    if (use == DoorUse::Never || opened.refusal().isUnusable())
        return opened.refusal().withPrefix(words.empty() ? "" : words + "; ");
    return openByDoor(door, file, options, opened.refusal().message);
}

} // namespace Import
