#include <text/Loader.h>

#include <text/Entry.h>

#include <dlfcn.h>

#include <cstring>

namespace Text {

namespace {

constexpr const char* libraryName = "libfiles-pdf-text.so." FILES_PDF_SOVERSION;

Host::Refusal unsupported(const std::string& why)
{
    return {Host::Reason::Unsupported, "text in other fonts needs libfiles-pdf-text, which " + why};
}

} // namespace

Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options) noexcept
{
    return loadEngine(options, libraryName);
}

Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options, const std::string& library) noexcept
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
    return entry->create(options);
}

} // namespace Text
