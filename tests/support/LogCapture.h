#pragma once

#include <platform/Error.h>
#include <platform/SysLog.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Tests {

using Lines = std::vector<std::string>;

// The code that an operation left which gave nothing; 0 when it gave something.
template <class Result>
std::uint32_t codeOf(const Result& result)
{
    return result ? 0 : Error::get();
}

// Plain text of a runtime string, each character cut to a byte.
inline std::string plain(const Ref<::String>& text)
{
    std::string result;
    if (text)
        text->forEach([&result](unsigned int c) { result += static_cast<char>(c); });
    return text ? result : "(null)";
}

inline Ref<::String> text(const std::string& bytes)
{
    return ::String::create(bytes.data(), 0, bytes.size());
}

// Collects the log lines of one filter for as long as it lives.
class LogCapture {
public:
    explicit LogCapture(const char* filter = "PDF", std::size_t level = 1) : _filter(filter)
    {
        SysLogFilter::enable(filter, true);
        SysLogFilter::setLevel(level);
        SysLogStream::setSink([this](std::size_t, Ref<::String> line) { lines.push_back(plain(line)); });
    }
    ~LogCapture()
    {
        SysLogFilter::enable(_filter, false);
        SysLogFilter::setLevel(4);
        SysLogStream::setSink({});
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // The lines since the last call.
    Lines take() { return std::exchange(lines, {}); }
    bool has(const std::string& line) const { return std::find(lines.begin(), lines.end(), line) != lines.end(); }

    Lines lines;

private:
    const char* _filter;
};

} // namespace Tests
