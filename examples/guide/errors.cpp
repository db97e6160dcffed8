// Opens a file with the log switched on, and says why it is refused.

#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>
#include <host/files/Open.h>
#include <platform/SysLog.h>

#include <cstdio>

namespace {

void keepLog()
{
    SysLogFilter::setLevel(LogLevel::information); // failures alone without this
    SysLogFilter::enable("PDF", true);
    SysLogFilter::enable("Lib.File.PDF.Form", true);
    SysLogStream::setSink([](std::size_t level, const Ref<::String>& line) {
        std::printf("log %zu: %s\n", level, Host::toUtf8(line).c_str());
    });
}

} // namespace

int main(int argc, char** argv)
{
    keepLog();
    auto opened = Host::open(argc > 1 ? argv[1] : "in.pdf");
    if (opened)
        return 0;
    const Host::Refusal& refusal = opened.refusal();
    if (refusal.reason == Host::Reason::Unreadable) // so nothing is known about what is in it
        std::printf("%s\n", refusal.message.c_str());
    else
        std::printf("%s: %s\n", Host::codeText(refusal.code).c_str(), refusal.message.c_str());
    return 1;
}
