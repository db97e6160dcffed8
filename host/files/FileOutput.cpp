#include <host/files/FileOutput.h>

#include <host/base/Characters.h>
#include <host/base/ErrorWords.h>

#include <fcntl.h>
#include <platform/Limits.h>
#include <sys/random.h>

#include <cerrno>
#include <cstdio>
#include <fstream>

namespace Host {

namespace {

constexpr std::size_t bufferSize = 65536;
constexpr mode_t permissions = 07777;
constexpr mode_t newFile = 0666;
constexpr mode_t ownerOnly = 0600;

Refusal systemFailure(std::string_view what, int systemError)
{
    return systemRefusal(Reason::SystemFailure, what, systemError);
}

std::string randomName()
{
    unsigned long long number = 0;
    if (::getrandom(&number, sizeof number, 0) != sizeof number)
        return {};
    char name[40];
    std::snprintf(name, sizeof name, ".files-pdf-%016llx", number);
    return name;
}

// The umask of the process. The system call that returns it also sets it, for all threads; so it is read
// from /proc, and where that is missing the file remains private to its owner.
mode_t maskOfProcess()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        unsigned mask = 0;
        if (std::sscanf(line.c_str(), "Umask: %o", &mask) == 1)
            return mask;
    }
    return newFile & ~ownerOnly;
}

bool writeAll(int file, const std::uint8_t* bytes, std::size_t count)
{
    while (count > 0) {
        const ssize_t written = ::write(file, bytes, count);
        if (written == 0)
            errno = EIO; // it would never end
        if (written == 0 || (written < 0 && errno != EINTR))
            return false;
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
    }
    return true;
}

} // namespace

Result<Ref<FileOutput>> FileOutput::create(const std::string& path) noexcept
{
    Result<Target> target = Target::find(path);
    if (!target)
        return target.refusal();
    for (int attempt = 0; attempt < Limits::maxNameAttempts; ++attempt) {
        std::string name = randomName();
        if (name.empty())
            return systemFailure("no random name is available", errno);
        Descriptor file(::openat(target->folder(), name.c_str(),
            O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, ownerOnly));
        if (file.isOpen())
            return make<FileOutput>(std::move(*target), std::move(file), std::move(name));
        if (errno != EEXIST)
            break;
    }
    return systemRefusal(Reason::UnusableTarget, "no file can be created in its folder", errno);
}

FileOutput::FileOutput(Target target, Descriptor file, std::string temporaryName) noexcept
    : _target(std::move(target)), _file(std::move(file)), _temporaryName(std::move(temporaryName))
{
    _buffer.reserve(bufferSize);
}

FileOutput::~FileOutput() noexcept
{
    discard();
}

std::uint64_t FileOutput::read(BufferDesc&, std::uint64_t, std::uint32_t) noexcept
{
    Error::set(ErrNotSupported);
    return 0;
}

std::uint64_t FileOutput::write(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept
{
    if (!isWritable())
        return 0;
    if (area.kind != BufferDesc::Plain)
        return fail({Reason::WrongArgument, "the writer used memory that can't be shared", ErrInvalidArgument});
    const auto* memory = static_cast<const unsigned char*>(area.pointer) + area.offset;
    for (std::uint64_t done = 0; done < count;) {
        const std::uint64_t chunk = std::min<std::uint64_t>(count - done, bufferSize - _buffer.size());
        _buffer.resize(_buffer.size() + chunk);
        std::uint8_t* const bytes = _buffer.data() + _buffer.size() - chunk;
        for (std::uint64_t i = 0; i < chunk; ++i) {
            std::uint32_t element;
            Mem::copy(memory + (done + i) * sizeof element, &element, sizeof element);
            const int byte = byteOfElement(element);
            if (byte < 0)
                return fail({Reason::Unwritable, "a character can't be represented in the file: " + codeText(element),
                    ErrInvalidArgument});
            bytes[i] = static_cast<std::uint8_t>(byte);
        }
        done += chunk;
        if (_buffer.size() == bufferSize && !flush())
            return 0;
    }
    _count += count;
    return count;
}

std::uint64_t FileOutput::writeBytes(const void* bytes, std::uint64_t count) noexcept
{
    if (!isWritable() || (count > bufferSize - _buffer.size() && !flush()))
        return 0;
    const auto* const first = static_cast<const std::uint8_t*>(bytes);
    if (count < bufferSize)
        _buffer.insert(_buffer.end(), first, first + count);
    else if (!writeAll(_file.number(), first, count))
        return fail(systemFailure("can't be written", errno));
    _count += count;
    return count;
}

Result<Ref<FileStripe>> FileOutput::reopen() noexcept
{
    if (!flush())
        return *_failure;
    Descriptor copy(::fcntl(_file.number(), F_DUPFD_CLOEXEC, 0));
    if (!copy.isOpen())
        return systemFailure("can't be opened again", errno);
    Result<FileBytes> bytes = FileBytes::adopt(std::move(copy));
    if (!bytes)
        return bytes.refusal();
    return make<FileStripe>(std::move(*bytes));
}

Result<Durability> FileOutput::commit() noexcept
{
    if (!flush() || !takeOverMode() || !rename()) {
        discard();
        return *_failure;
    }
    _temporaryName.clear();
    _file = Descriptor();
    return ::fsync(_target.folder()) == 0 ? Durability::Synced : Durability::Unknown;
}

// Keeps the first failure and leaves its code; false, and also no elements written.
bool FileOutput::fail(Refusal refusal) noexcept
{
    if (!_failure)
        _failure = std::move(refusal);
    Error::set(_failure->code ? _failure->code : ErrNoResource);
    return false;
}

bool FileOutput::isWritable() noexcept
{
    if (_failure)
        return fail(*_failure);
    return _file.isOpen() || fail({Reason::WrongArgument, "has already been written"});
}

bool FileOutput::flush() noexcept
{
    if (!isWritable())
        return false;
    if (!writeAll(_file.number(), _buffer.data(), _buffer.size()))
        return fail(systemFailure("can't be written", errno));
    _buffer.clear();
    return true;
}

bool FileOutput::takeOverMode() noexcept
{
    Result<std::optional<struct stat>> old = _target.inspect();
    if (!old)
        return fail(old.refusal());
    struct stat own;
    if (::fstat(_file.number(), &own) != 0)
        return fail(systemFailure("can't be examined", errno));
    mode_t mode = newFile & ~maskOfProcess();
    if (*old) {
        const struct stat& previous = **old;
        mode = previous.st_mode & permissions;
        const bool isSameOwner = own.st_uid == previous.st_uid && own.st_gid == previous.st_gid;
        // Before the mode: a new owner takes bits of it away.
        if (!isSameOwner && ::fchown(_file.number(), previous.st_uid, previous.st_gid) != 0)
            return fail(systemFailure("can't be given the owner of the file that it replaces", errno));
    }
    if (::fchmod(_file.number(), mode) != 0)
        return fail(systemFailure("can't be given its mode", errno));
    return true;
}

bool FileOutput::rename() noexcept
{
    if (::fsync(_file.number()) != 0)
        return fail(systemFailure("can't be synced to the disk", errno));
    if (::renameat(_target.folder(), _temporaryName.c_str(), _target.folder(), _target.name()) != 0)
        return fail(systemFailure("can't be replaced", errno));
    return true;
}

void FileOutput::discard() noexcept
{
    if (!_temporaryName.empty())
        ::unlinkat(_target.folder(), _temporaryName.c_str(), 0);
    _temporaryName.clear();
    _file = Descriptor();
}

} // namespace Host
