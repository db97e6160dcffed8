#include <import/Loader.h>

// What programs of static libraries have instead of the loader: two copies of the core in a program would not know each
// other's values.
namespace Import {

#ifdef FILES_PDF_IMPORT

Host::Result<Door> loadDoor() noexcept
{
    return &open;
}

Host::Result<Imported> openIfInstalled(const Ref<Host::FileStripe>& file, const Options& options) noexcept
{
    return open(file, options);
}

Host::Result<Host::Saved> saveIfInstalled(const Host::OpenedFile& opened, const std::string& path,
    const Storage& storage, const Host::SaveOptions& options) noexcept
{
    return save(opened, path, storage, options);
}

#else

namespace {

Host::Refusal missing()
{
    return {Host::Reason::Unsupported, "needs libfiles-pdf-import, which isn't part of this program"};
}

} // namespace

Host::Result<Door> loadDoor() noexcept
{
    return missing();
}

Host::Result<Imported> openIfInstalled(const Ref<Host::FileStripe>&, const Options&) noexcept
{
    return missing();
}

Host::Result<Host::Saved> saveIfInstalled(
    const Host::OpenedFile&, const std::string&, const Storage&, const Host::SaveOptions&) noexcept
{
    return missing();
}

#endif

Host::Result<Door> loadDoor(const std::string&) noexcept
{
    return loadDoor();
}

} // namespace Import
