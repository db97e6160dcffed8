#include <tools/Opening.h>

#include <tools/FileProgress.h>
#include <tools/Hints.h>

namespace Tools {

Host::Result<Host::OpenedFile> open(const std::string& path)
{
    auto opened = withProgress("opening", [&path] { return Host::open(path); });
    return opened ? std::move(opened) : withOpeningHint(opened.refusal());
}

} // namespace Tools
