#pragma once

#include <host/files/ReadWatch.h>
#include <tools/Progress.h>

namespace Tools {

// A bar of how far the files of one step are read, as long as it lives. Nothing should be printed meanwhile.
class FileProgress {
public:
    // `words` name the step.
    explicit FileProgress(std::string words)
        : _words(std::move(words)),
          _watch([this](std::uint64_t end, std::uint64_t size) { _progress.show(end, size, _words); })
    {
    }

private:
    const std::string _words;
    Progress _progress;
    const Host::ReadWatch _watch;
};

// What the work gives, with a bar while it is done.
template <class Work>
auto withProgress(const char* words, Work work)
{
    const FileProgress progress(words);
    return work();
}

} // namespace Tools
