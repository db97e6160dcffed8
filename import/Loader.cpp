#include <import/Loader.h>

#include <import/Entry.h>

#include <dlfcn.h>

#include <cstring>

namespace Import {

namespace {

constexpr const char* libraryName = "libfiles-pdf-import.so." FILES_PDF_SOVERSION;

Host::Refusal unsupported(const std::string& why)
{
    return {Host::Reason::Unsupported, "needs libfiles-pdf-import, which " + why};
}

Host::Result<const Entry*> load(const std::string& library)
{
    void* const handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const std::string reason = ::dlerror();
        // What is missing comes first: the library itself, or one that it needs.
        return unsupported(reason.starts_with(library) ? "isn't installed" : "can't be loaded: " + reason);
    }
    const auto* const entry = static_cast<const Entry*>(::dlsym(handle, entryName));
    if (!entry || std::strcmp(entry->version, FILES_PDF_VERSION) != 0)
        return unsupported("is of another version than " FILES_PDF_VERSION);
    return entry;
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
