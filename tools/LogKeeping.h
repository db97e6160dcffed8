#pragma once

#include <platform/SysLog.h>
#include <tools/Program.h>

#include <string>
#include <vector>

namespace Tools {

// -v, of the programs that print the log at their end.
OptionGroup logOptions();

// From now on all log lines of the library that are of this level or above go to the sink.
void listenToLog(SysLogStream::Sink sink, std::size_t level = LogLevel::information);

// Keeps the log lines of the library: the last failure, or all. All are printed to standard error at the end of its
// life: after all that the program says itself.
class LogKeeping {
public:
    explicit LogKeeping(bool isPrinted);
    LogKeeping(const LogKeeping&) = delete;
    LogKeeping& operator=(const LogKeeping&) = delete;
    ~LogKeeping();

    // The last line of a failure; empty when there was none.
    const std::string& lastFailure() const { return _lastFailure; }

private:
    std::string _lastFailure;
    std::vector<std::string> _lines;
};

} // namespace Tools
