#pragma once

#include <host/base/Result.h>
#include <host/files/FileStripe.h>
#include <host/files/Target.h>

#include <optional>
#include <vector>

namespace Host {

// Whether a committed file survives a loss of power that follows at once.
enum class Durability {
    Synced,  // file and folder are on the disk
    Unknown, // the file is, but its folder could not be synced
};

// A new file that replaces another all at once, for `Document::write`: a stream of 4-byte
// elements, each the Windows-1252 code point of a byte. The bytes go to a file of a random name beside
// the target, readable by the owner alone; `commit` gives it the target's name. Until then the target
// is untouched, and when the object is destroyed without a commit, nothing is left. Only a process that
// is killed leaves its file, whose name begins with ".files-pdf-".
//
// The new file gets the mode and owner of the old one. Other hard links to the old file
// keep the old contents, and extended attributes and access lists are not copied. A process
// that runs under a limit of file sizes should ignore SIGXFSZ: then the limit is an error like others.
class EXPORTED FileOutput final
    : public ::Object, public virtual Interfaces::Stream, public virtual Interfaces::ByteWriting {
public:
    // Follows symbolic links to the target, which need not exist. Refused with `Reason::UnusableTarget`, before
    // anything is written: a folder, FIFO, socket or device, a file that the caller may not write, and a folder in
    // which no file can be created.
    static Result<Ref<FileOutput>> create(const std::string& path) noexcept;

    // For `create`: a target, and a new file of that name in its folder.
    FileOutput(Target target, Descriptor file, std::string temporaryName) noexcept;
    ~FileOutput() noexcept override;

    // Interfaces::Stream. The first failure, of the system or of an element that represents no byte, is
    // kept, and everything after it writes 0 elements with `ErrNoResource` or `ErrInvalidArgument`;
    // reading is not supported.
    std::uint64_t elementSize() const noexcept override { return sizeof(std::uint32_t); }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override;

    // Interfaces::ByteWriting, with the failures of `write`.
    bool takesBytes() const noexcept override { return true; }
    std::uint64_t writeBytes(const void* bytes, std::uint64_t count) noexcept override;

    // How many bytes were accepted so far.
    std::uint64_t count() const noexcept { return _count; }
    // The first failure; none as long as all succeeds.
    const std::optional<Refusal>& failure() const noexcept { return _failure; }

    // The file as it has been written so far, to be read before it has the target's name.
    Result<Ref<FileStripe>> reopen() noexcept;
    // Writes what is left, gives the file the mode and owner of the target (or, when there is none, the
    // mode that any new file gets), syncs it and renames it over the target. After a refusal nothing is
    // left of it and the target is untouched. With `Reason::OutOfSpace` there was no room for it.
    Result<Durability> commit() noexcept;

private:
    bool fail(Refusal refusal) noexcept;
    bool isWritable() noexcept;
    bool flush() noexcept;
    bool takeOverMode() noexcept;
    bool rename() noexcept;
    void discard() noexcept;

    const Target _target;
    Descriptor _file;           // for reading and writing; closed once it was committed or discarded
    std::string _temporaryName; // in the target's folder; empty when there is no such file
    std::vector<std::uint8_t> _buffer;
    std::uint64_t _count = 0;
    std::optional<Refusal> _failure;
};

} // namespace Host
