#include <tools/Progress.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace Tools {

namespace {

constexpr int lineWidth = 79; // the last of 80 columns would begin a new line

std::string barOf(std::uint64_t done, std::uint64_t total)
{
    if (total == 0)
        return "";
    constexpr std::size_t length = 30;
    const double part = std::min(1.0, double(done) / double(total));
    std::string text = "[" + std::string(std::size_t(part * length), '#');
    text.resize(length + 1, ' ');
    return text + "] " + std::to_string(int(part * 100)) + " %  ";
}

} // namespace

Progress::Progress(bool isWanted) noexcept : _isWanted(isWanted && isatty(STDERR_FILENO)) {}

Progress::~Progress()
{
    if (_isDrawn)
        std::fprintf(stderr, "\r%*s\r", lineWidth, "");
}

void Progress::show(std::uint64_t done, std::uint64_t total, const std::string& message)
{
    if (!_isWanted || Clock::now() < _next)
        return;
    _next = Clock::now() + std::chrono::milliseconds(100);
    _isDrawn = true;
    std::fprintf(stderr, "\r%-*.*s", lineWidth, lineWidth, (barOf(done, total) + message).c_str());
    std::fflush(stderr);
}

} // namespace Tools
