#include "RoundTrip.h"
#include "Walk.h"

#include <platform/SysLog.h>

// The target `open`: the input is a file. Everything is asked of its document, which is then written.

namespace {

// The lines of every other input are made, so that the code behind them runs too.
class Logging {
public:
    explicit Logging(bool isOn) noexcept
    {
        SysLogStream::setSink([](std::size_t, const Ref<::String>&) {});
        SysLogFilter::setLevel(LogLevel::information);
        for (const char* filter : {"PDF", "Lib.File.PDF.Form"})
            SysLogFilter::enable(filter, isOn);
    }
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string_view file(reinterpret_cast<const char*>(bytes), size);
    const Logging logging(size % 2 == 0);
    Ref<Fuzz::PDF::Document> document = Fuzz::openFile(file);
    if (!document)
        return 0;
    Fuzz::Allowance allowance;
    Fuzz::walk(document, file, allowance);
    Fuzz::checkExamined(std::move(document), file, allowance);
    return 0;
}
