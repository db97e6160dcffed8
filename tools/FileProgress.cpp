#include <tools/FileProgress.h>

namespace Tools {

FileProgress::FileProgress(std::string step)
    : _step(std::move(step)),
      _watch([this](std::uint64_t end, std::uint64_t size) { _progress.show(end, size, _step); })
{
}

} // namespace Tools
