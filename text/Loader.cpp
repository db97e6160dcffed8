#include <text/Loader.h>

#include <host/base/LoadedEntry.h>
#include <text/Entry.h>

namespace Text {

namespace {

constexpr const char* libraryName = "libfiles-pdf-text.so." FILES_PDF_SOVERSION;

} // namespace

Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options) noexcept
{
    return loadEngine(options, libraryName);
}

Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options, const std::string& library) noexcept
{
    const auto entry = Host::loadEntry<Entry>(
        library, entryName, FILES_PDF_VERSION, "text in other fonts needs libfiles-pdf-text, which ");
    return entry ? (*entry)->create(options) : Host::Result<std::shared_ptr<Host::TextEngine>>(entry.refusal());
}

} // namespace Text
