#include <host/files/Target.h>

#include <host/base/ErrorWords.h>
#include <platform/Limits.h>

#include <fcntl.h>

#include <cerrno>
#include <filesystem>

namespace Host {

namespace {

namespace fs = std::filesystem;

Refusal unusable(std::string_view what, int systemError)
{
    return systemRefusal(Reason::UnusableTarget, what, systemError);
}

// The path at the end of the symbolic links, which may lead to a file that doesn't exist yet.
Result<fs::path> followLinks(fs::path path)
{
    // The system follows them first: it refuses links that others have planted in a shared folder.
    struct stat found;
    if (::stat(path.c_str(), &found) != 0 && errno != ENOENT)
        return unusable("can't be reached", errno);
    for (int links = 0; links <= Limits::maxLinks; ++links) {
        if (::lstat(path.c_str(), &found) != 0 || !S_ISLNK(found.st_mode))
            return path;
        std::error_code failure;
        const fs::path next = fs::read_symlink(path, failure);
        if (failure)
            return unusable("can't be followed", failure.value());
        path = path.parent_path() / next; // an absolute one replaces what is before it
    }
    return unusable("can't be followed", ELOOP);
}

// For reading where that is allowed, since only such a folder can be synced.
int openFolder(const char* path)
{
    const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return folder >= 0 || errno != EACCES ? folder : ::open(path, O_PATH | O_DIRECTORY | O_CLOEXEC);
}

const char* kindOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR: return "is a folder";
    case S_IFIFO: return "is a FIFO";
    case S_IFSOCK: return "is a socket";
    case S_IFLNK: return "has become a symbolic link";
    default: return "is a device";
    }
}

} // namespace

Result<Target> Target::find(const std::string& path) noexcept
{
    Result<fs::path> resolved = followLinks(path);
    if (!resolved)
        return resolved.refusal();
    std::string name = resolved->filename();
    if (name.empty())
        return Refusal{Reason::UnusableTarget, "doesn't name a file"};
    const fs::path parent = resolved->has_parent_path() ? resolved->parent_path() : ".";
    Descriptor folder(openFolder(parent.c_str()));
    if (!folder.isOpen())
        return unusable("its folder can't be opened", errno);
    Target target(std::move(folder), std::move(name));
    const auto present = target.inspect();
    if (!present)
        return present.refusal();
    return target;
}

Result<std::optional<struct stat>> Target::inspect() const noexcept
{
    struct stat found;
    if (::fstatat(folder(), name(), &found, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT)
            return std::optional<struct stat>();
        return unusable("can't be examined", errno);
    }
    if (!S_ISREG(found.st_mode))
        return Refusal{Reason::UnusableTarget, kindOf(found.st_mode)};
    if (::faccessat(folder(), name(), W_OK, AT_EACCESS) != 0)
        return unusable("is not writable", errno);
    return std::optional(found);
}

} // namespace Host
