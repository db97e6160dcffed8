#include <import/Loader.h>

#include <import/Entry.h>

#include <dlfcn.h>

#include <cstring>

namespace Import {

namespace {

Host::Refusal unsupported(const std::string& why)
{
    return {Host::Reason::Unsupported, "needs libfiles-pdf-import, which " + why};
}

} // namespace

Host::Result<Door> loadDoor() noexcept
{
    return loadDoor("libfiles-pdf-import.so." FILES_PDF_SOVERSION);
}

Host::Result<Door> loadDoor(const std::string& library) noexcept
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
    return entry->open;
}

Host::Result<Imported> openIfInstalled(const Ref<Host::FileStripe>& file, const Options& options) noexcept
{
    static const Host::Result<Door> door = loadDoor();
    return door ? (*door)(file, options) : Host::Result<Imported>(door.refusal());
}

} // namespace Import
