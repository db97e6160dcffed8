#pragma once

#include <host/files/FileStripe.h>

namespace Tools {

// "-" in the place of a file: standard input, or standard output.
inline bool isStandard(const std::string& path)
{
    return path == "-";
}

// All of standard input, as a file without a name.
Host::Result<Ref<Host::FileStripe>> readStandardInput();

// A file in the folder for temporary files, whose bytes go to standard output once they are whole. Nothing is left of it
// but where the process is killed before `copy`.
class OutputByFile {
public:
    // Refused where standard output is a terminal.
    static Host::Result<OutputByFile> create();
    OutputByFile(OutputByFile&& other) noexcept : _path(std::exchange(other._path, {})) {}
    ~OutputByFile();

    const std::string& path() const { return _path; }
    std::optional<Host::Refusal> copy();

private:
    explicit OutputByFile(std::string path) : _path(std::move(path)) {}

    std::string _path; // empty once there is no file
};

} // namespace Tools
