#pragma once

#include <host/base/Result.h>
#include <host/files/Descriptor.h>

#include <sys/stat.h>

#include <optional>

namespace Host {

// The place of a new file: an open folder and a name in it, at the end of all symbolic links.
class Target {
public:
    // Refused: a path that can't be followed, a folder that can't be opened, and what `inspect` refuses.
    static Result<Target> find(const std::string& path) noexcept;

    // What is there; no value when there is nothing. Refused: anything but a regular file, and one
    // that the caller may not write.
    Result<std::optional<struct stat>> inspect() const noexcept;

    // The descriptor of the folder, for system calls, and the name in it.
    int folder() const noexcept { return _folder.number(); }
    const char* name() const noexcept { return _name.c_str(); }

private:
    Target(Descriptor folder, std::string name) noexcept : _folder(std::move(folder)), _name(std::move(name)) {}

    Descriptor _folder;
    std::string _name;
};

} // namespace Host
