#include <host/files/FileBytes.h>

#include <host/base/ErrorWords.h>
#include <host/files/ReadWatch.h>

#include <fcntl.h>

#include <cerrno>

namespace Host {

namespace {

// Blocks begin at multiples of this, so that a walk backwards doesn't read one for each step.
constexpr std::uint64_t blockSize = 16384;

Refusal unreadable(std::string_view what, int systemError)
{
    return systemRefusal(Reason::Unreadable, what, systemError);
}

bool isSameTime(const struct timespec& a, const struct timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// Up to `count` bytes at `position`: how many there were, or -1 with `errno` when not even one can be
// read.
ssize_t readAt(int file, std::uint8_t* bytes, std::size_t count, std::uint64_t position)
{
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = ::pread(file, bytes + done, count - done, static_cast<off_t>(position + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 && done == 0)
            return -1;
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(done);
}

} // namespace

FileBytes::FileBytes(Descriptor file, const struct stat& opened) noexcept
    : _file(std::move(file)), _opened(opened), _block(new std::uint8_t[blockSize])
{
}

Result<FileBytes> FileBytes::open(const std::string& path) noexcept
{
    // Without waiting: opening a FIFO would block until somebody writes to it.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen())
        return unreadable("can't be opened", errno);
    return adopt(std::move(file));
}

Result<FileBytes> FileBytes::adopt(Descriptor file) noexcept
{
    struct stat opened;
    if (::fstat(file.number(), &opened) != 0)
        return unreadable("can't be examined", errno);
    if (!S_ISREG(opened.st_mode))
        return Refusal{Reason::Unreadable, S_ISDIR(opened.st_mode) ? "is a folder" : "is not a regular file"};
    return FileBytes(std::move(file), opened);
}

bool FileBytes::load(std::uint64_t position, ByteRun& window) noexcept
{
    window = {_block.get(), position - position % blockSize, 0};
    const std::uint64_t wanted = std::min(blockSize, size() - window.start);
    const ssize_t got = readAt(_file.number(), _block.get(), wanted, window.start);
    if (got >= 0 && static_cast<std::uint64_t>(got) > position - window.start) {
        window.length = static_cast<std::uint64_t>(got);
        ReadWatch::tell(window.start + window.length, size());
        return true;
    }
    if (!_readFailure)
        _readFailure = got < 0 ? unreadable("can't be read", errno)
                               : Refusal{Reason::Unreadable, "became shorter while it was being read"};
    Error::set(ErrNoResource);
    return false;
}

// The time of the last change of the inode moves with every write, even when the time of the last writing was
// set back, but also with new links, modes and owners: after a save over the file itself it has one link less.
// So it counts only when none of these explains it.
bool FileBytes::isUnchanged() const noexcept
{
    struct stat now;
    if (::fstat(_file.number(), &now) != 0)
        return false;
    const bool isExplained = now.st_nlink != _opened.st_nlink || now.st_mode != _opened.st_mode
        || now.st_uid != _opened.st_uid || now.st_gid != _opened.st_gid;
    return now.st_dev == _opened.st_dev && now.st_ino == _opened.st_ino && now.st_size == _opened.st_size
        && isSameTime(now.st_mtim, _opened.st_mtim) && (isExplained || isSameTime(now.st_ctim, _opened.st_ctim));
}

} // namespace Host
