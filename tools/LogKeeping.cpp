#include <tools/LogKeeping.h>

#include <host/base/Utf8.h>
#include <tools/ShownText.h>

#include <cstdio>

namespace Tools {

OptionGroup logOptions()
{
    static constexpr Option options[] = {{"-v", "", "print the library's log lines at the end"}};
    return {"", options};
}

void listenToLog(SysLogStream::Sink sink, std::size_t level)
{
    SysLogFilter::setLevel(level);
    SysLogFilter::enable("PDF", true);
    SysLogFilter::enable("Lib.File.PDF.Form", true);
    SysLogStream::setSink(std::move(sink));
}

LogKeeping::LogKeeping(bool isPrinted)
{
    const auto keep = [this, isPrinted](std::size_t level, const Ref<::String>& line) {
        std::string text = shown(Host::toUtf8(line));
        if (level >= LogLevel::failure)
            _lastFailure = text;
        if (isPrinted)
            _lines.push_back(std::move(text));
    };
    listenToLog(keep, isPrinted ? LogLevel::information : LogLevel::failure);
}

LogKeeping::~LogKeeping()
{
    SysLogStream::setSink({});
    for (const std::string& line : _lines)
        std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace Tools
