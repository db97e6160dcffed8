#include <import/Loader.h>

#include <host/base/LoadedEntry.h>
#include <import/Entry.h>

namespace Import {

namespace {

constexpr const char* libraryName = "libfiles-pdf-import.so." FILES_PDF_SOVERSION;

Host::Result<const Entry*> load(const std::string& library)
{
    return Host::loadEntry<Entry>(library, entryName, FILES_PDF_VERSION, "needs libfiles-pdf-import, which ");
}

const Host::Result<const Entry*>& installed()
{
    static const Host::Result<const Entry*> entry = load(libraryName);
    return entry;
}

} // namespace

Host::Result<Door> loadDoor() noexcept
{
    return loadDoor(libraryName);
}

Host::Result<Door> loadDoor(const std::string& library) noexcept
{
    const Host::Result<const Entry*> entry = load(library);
    return entry ? (*entry)->open : Host::Result<Door>(entry.refusal());
}

Host::Result<Imported> openIfInstalled(const Ref<Host::FileStripe>& file, const Options& options) noexcept
{
    const auto& entry = installed();
    return entry ? (*entry)->open(file, options) : Host::Result<Imported>(entry.refusal());
}

Host::Result<Host::Saved> saveIfInstalled(const Host::OpenedFile& opened, const std::string& path,
    const Storage& storage, const Host::SaveOptions& options) noexcept
{
    const auto& entry = installed();
    return entry ? (*entry)->save(opened, path, storage, options) : Host::Result<Host::Saved>(entry.refusal());
}

} // namespace Import
