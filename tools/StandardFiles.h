#pragma once

#include <host/files/FileStripe.h>

#include <optional>
#include <string>
#include <utility>

namespace Tools {

// "-" in the place of a file: standard input, or standard output.
inline bool isStandard(const std::string& path)
{
    return path == "-";
}

// All of standard input, as a file without a name.
Host::Result<Ref<Host::FileStripe>> readStandardInput();

// A file in the folder for temporary files, TMPDIR or /var/tmp, whose bytes go to standard output once they are whole.
// Only a process that is killed before `copy` leaves it, with a name that begins with "files-pdf-".
class OutputByFile {
public:
    // Refused where standard output is a terminal.
    static Host::Result<OutputByFile> create();
    OutputByFile(OutputByFile&& other) noexcept : _path(std::exchange(other._path, {})) {}
    ~OutputByFile();

    const std::string& path() const { return _path; }
    // The last call: takes the file away, and gives all its bytes to standard output.
    std::optional<Host::Refusal> copy();

private:
    explicit OutputByFile(std::string path) : _path(std::move(path)) {}

    std::string _path; // empty once there is no file
};

} // namespace Tools
