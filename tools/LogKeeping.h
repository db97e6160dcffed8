#pragma once

#include <platform/SysLog.h>
#include <tools/Program.h>

#include <string>
#include <vector>

namespace Tools {

// -v, of the programs that print the log at their end.
OptionGroup logOptions();

// From now on all log lines of the library go to the sink.
void listenToLog(SysLogStream::Sink sink);

// Keeps the log lines of the library, and prints them to standard error at the end of its life: after all that the
// program says itself.
class LogKeeping {
public:
    LogKeeping();
    LogKeeping(const LogKeeping&) = delete;
    LogKeeping& operator=(const LogKeeping&) = delete;
    ~LogKeeping();

private:
    std::vector<std::string> _lines;
};

} // namespace Tools
