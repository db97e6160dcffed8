#include <tools/StandardFiles.h>

#include <host/base/ErrorWords.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace Tools {

namespace {

using Host::Descriptor;
using Host::Reason;

// A new file; `path` becomes its name.
Host::Result<Descriptor> makeFile(std::string& path)
{
    const char* const chosen = std::getenv("TMPDIR");
    const std::string folder = chosen && *chosen ? chosen : "/var/tmp"; // where /tmp is memory, this isn't
    path = folder + "/files-pdf-XXXXXX";
    Descriptor file(::mkostemp(path.data(), O_CLOEXEC));
    if (!file.isOpen())
        return Host::systemRefusal(Reason::SystemFailure, "no temporary file can be made", errno);
    return file;
}

// All bytes from one descriptor to the other.
std::optional<Host::Refusal> copyAll(int from, int to)
{
    char block[65536];
    for (;;) {
        const ssize_t count = ::read(from, block, sizeof block);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return Host::systemRefusal(Reason::Unreadable, "can't be read", errno);
        if (count == 0)
            return {};
        for (ssize_t done = 0; done < count;) {
            const ssize_t written = ::write(to, block + done, std::size_t(count - done));
            if (written < 0 && errno != EINTR)
                return Host::systemRefusal(Reason::SystemFailure, "can't be written", errno);
            done += std::max<ssize_t>(written, 0);
        }
    }
}

} // namespace

Host::Result<Ref<Host::FileStripe>> readStandardInput()
{
    std::string path;
    Host::Result<Descriptor> file = makeFile(path);
    if (!file)
        return file.refusal();
    ::unlink(path.c_str());
    if (auto refusal = copyAll(STDIN_FILENO, file->number()))
        return *refusal;
    Host::Result<Host::FileBytes> bytes = Host::FileBytes::adopt(std::move(*file));
    if (!bytes)
        return bytes.refusal();
    return make<Host::FileStripe>(std::move(*bytes));
}

Host::Result<OutputByFile> OutputByFile::create()
{
    if (isatty(STDOUT_FILENO))
        return Host::Refusal{Reason::UnusableTarget, "standard output is a terminal"};
    std::string path;
    const Host::Result<Descriptor> file = makeFile(path);
    if (!file)
        return file.refusal();
    return OutputByFile(std::move(path));
}

OutputByFile::~OutputByFile()
{
    if (!_path.empty())
        ::unlink(_path.c_str());
}

std::optional<Host::Refusal> OutputByFile::copy()
{
    const Descriptor file(::open(_path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen())
        return Host::systemRefusal(Reason::SystemFailure, "a temporary file can't be opened", errno);
    ::unlink(_path.c_str()); // before a signal of the copying may end the process
    _path.clear();
    return copyAll(file.number(), STDOUT_FILENO);
}

} // namespace Tools
