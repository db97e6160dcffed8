#pragma once

#include <host/files/ReadWatch.h>
#include <tools/Progress.h>

namespace Tools {

// A bar of how far the files of one step are read, as long as it lives. Nothing should be printed meanwhile.
class FileProgress {
public:
    // `step` says what is done: "saving".
    explicit FileProgress(std::string step);

private:
    const std::string _step;
    Progress _progress;
    const Host::ReadWatch _watch;
};

// What the work gives, with a bar while it is done.
template <class Work>
auto withProgress(const char* step, Work work)
{
    const FileProgress progress(step);
    return work();
}

} // namespace Tools
