#include <text/Loader.h>

// What programs of static libraries have instead of the loader.
namespace Text {

Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(
    [[maybe_unused]] const Options& options, const std::string&) noexcept
{
#ifdef FILES_PDF_TEXT
    return createEngine(options);
#else
    return Host::Refusal{
        Host::Reason::Unsupported, "text in other fonts needs libfiles-pdf-text, which isn't part of this program"};
#endif
}

Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options) noexcept
{
    return loadEngine(options, "");
}

} // namespace Text
