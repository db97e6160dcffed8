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

void listenToLog(SysLogStream::Sink sink)
{
    SysLogFilter::setLevel(LogLevel::information);
    SysLogFilter::enable("PDF", true);
    SysLogFilter::enable("Lib.File.PDF.Form", true);
    SysLogStream::setSink(std::move(sink));
}

LogKeeping::LogKeeping()
{
    listenToLog([this](std::size_t, const Ref<::String>& line) { _lines.push_back(shown(Host::toUtf8(line))); });
}

LogKeeping::~LogKeeping()
{
    SysLogStream::setSink({});
    for (const std::string& line : _lines)
        std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace Tools
