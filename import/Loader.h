#pragma once

#include <import/OpenAny.h>
#include <import/Save.h>

// For programs that open most files by the core, and shouldn't have libqpdf and the fifteen libraries that it brings in
// memory for those: they link this, which is static and small, and load the rest when a file needs it.
namespace Import {

// The door of the installed library, which is loaded now and stays. Refused as `Unsupported` when it isn't installed,
// lacks a library that it needs, or is of another version than this program; the message says which.
Host::Result<Door> loadDoor() noexcept;
// The same of a library by its path, or by a name that the system looks for.
Host::Result<Door> loadDoor(const std::string& library) noexcept;

// `Import::open` and `Import::save` of the installed library, which is loaded at the first call. Refused as `loadDoor`
// is.
Host::Result<Imported> openIfInstalled(const Ref<Host::FileStripe>& file, const Options& options = {}) noexcept;
Host::Result<Host::Saved> saveIfInstalled(const Host::OpenedFile& opened, const std::string& path,
    const Storage& storage, const Host::SaveOptions& options = {}) noexcept;

} // namespace Import
