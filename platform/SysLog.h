#pragma once

#include <platform/StringPrinter.h>

#include <functional>

// The levels of log lines; higher is more severe.
namespace LogLevel {
constexpr std::size_t failure = 4;     // something was not done
constexpr std::size_t oddity = 3;      // survived
constexpr std::size_t information = 1; // nothing is wrong
} // namespace LogLevel

// The log. A line has a level and belongs to a filter, "PDF" or "Lib.File.PDF.Form". Nothing is logged
// until the application switches a filter on. All operations may be called from any thread.
class EXPORTED SysLogFilter {
public:
    // Switches a filter on or off by its name, also before anybody has registered it.
    static void enable(const char* name, bool on) noexcept;
    // The lowest level that is let through; 4 until the application sets another one.
    static std::size_t level() noexcept;
    static void setLevel(std::size_t level) noexcept;

    // For code that logs: a handle of its own for a filter of that name, never 0.
    static std::size_t reg(const char* name) noexcept;
    // Whether a handle's filter is on. The handle 0 is on as soon as any filter is.
    static bool state(std::size_t handle) noexcept;
    // The id to print with.
    static std::size_t id(std::size_t handle) noexcept;
};

// The printer of log lines: one per thread, so that a line reaches the sink whole.
class EXPORTED SysLogPrinter final : public StringPrinter {
public:
    // Opens a piece of a line. The pieces up to `endl` make one line, at the last one's level.
    SysLogPrinter& begin(std::size_t level, std::size_t id, unsigned verbosity) noexcept;
    // Hands the line to the sink.
    StringPrinter& endl() noexcept override;

private:
    std::size_t _level = 0;
};

// Where the lines go.
class EXPORTED SysLogStream {
public:
    // Takes a complete line, without a line ending, and its level.
    using Sink = std::function<void(std::size_t level, Ref<String> line)>;

    // Where complete lines go, one call at a time; an empty function stands for standard error. A
    // sink may use the library. It must not throw: an exception ends the program.
    static void setSink(Sink sink) noexcept;
    // The calling thread's printer.
    static SysLogPrinter& stdOutPrinter() noexcept;
};
