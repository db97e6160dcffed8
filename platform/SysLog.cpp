#include <platform/SysLog.h>

#include <platform/Utf8.h>

#include <atomic>
#include <cstdio>
#include <deque>
#include <map>
#include <mutex>
#include <utility>

namespace {

// The process's log: built on first use, since filters register while the program loads, and never
// torn down, since objects may still fail while it ends.
struct Log {
    std::mutex filterLock;
    std::map<std::string, bool> isOn;     // by name
    std::deque<std::string> handles;      // handle h has the name handles[h - 1]
    std::atomic<std::size_t> filtersOn{0}; // saves the lock while the log is off
    std::atomic<std::size_t> level{LogLevel::failure};

    std::recursive_mutex sinkLock;
    SysLogStream::Sink sink;
};

Log& theLog()
{
    static Log* const log = new Log;
    return *log;
}

// The thread's printer. What logs after the thread's own objects have ended, as the program's static ones do, gets
// another one, which is kept.
thread_local SysLogPrinter* ownPrinter = nullptr;

struct PrinterKeeper {
    PrinterKeeper() noexcept = default;
    PrinterKeeper(const PrinterKeeper&) = delete;
    PrinterKeeper& operator=(const PrinterKeeper&) = delete;
    ~PrinterKeeper() noexcept { Ref<SysLogPrinter>::adopt(std::exchange(ownPrinter, nullptr)); }
};

void writeToStandardError(const String& line)
{
    std::string bytes;
    line.forEach([&bytes](char32_t c) { Utf8::append(bytes, c); });
    bytes += '\n';
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

} // namespace

void SysLogFilter::enable(const char* name, bool on) noexcept
{
    Log& log = theLog();
    const std::lock_guard guard(log.filterLock);
    bool& state = log.isOn[name];
    if (state != on)
        log.filtersOn += on ? 1 : std::size_t(-1);
    state = on;
}

std::size_t SysLogFilter::level() noexcept
{
    return theLog().level;
}

void SysLogFilter::setLevel(std::size_t level) noexcept
{
    theLog().level = level;
}

std::size_t SysLogFilter::reg(const char* name) noexcept
{
    Log& log = theLog();
    const std::lock_guard guard(log.filterLock);
    log.handles.emplace_back(name);
    return log.handles.size();
}

bool SysLogFilter::state(std::size_t handle) noexcept
{
    Log& log = theLog();
    if (log.filtersOn == 0)
        return false;
    if (handle == 0)
        return true;
    const std::lock_guard guard(log.filterLock);
    const auto found = handle <= log.handles.size() ? log.isOn.find(log.handles[handle - 1]) : log.isOn.end();
    return found != log.isOn.end() && found->second;
}

std::size_t SysLogFilter::id(std::size_t handle) noexcept
{
    return handle;
}

SysLogPrinter& SysLogPrinter::begin(std::size_t level, std::size_t, unsigned) noexcept
{
    _level = level;
    return *this;
}

StringPrinter& SysLogPrinter::endl() noexcept
{
    Log& log = theLog();
    const Ref<String> line = take();
    const std::lock_guard guard(log.sinkLock);
    // A copy, so that the sink may set another one.
    if (const SysLogStream::Sink sink = log.sink)
        sink(_level, line);
    else
        writeToStandardError(*line);
    return *this;
}

void SysLogStream::setSink(Sink sink) noexcept
{
    Log& log = theLog();
    const std::lock_guard guard(log.sinkLock);
    log.sink = std::move(sink);
}

SysLogPrinter& SysLogStream::stdOutPrinter() noexcept
{
    if (!ownPrinter) {
        ownPrinter = make<SysLogPrinter>().release();
        thread_local const PrinterKeeper keeper;
    }
    return *ownPrinter;
}
