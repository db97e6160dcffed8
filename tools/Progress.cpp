#include <tools/Progress.h>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace Tools {

namespace {

// Of the terminal, without its last column, which would begin a new line.
int widthOfLine()
{
    struct winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col - 1 : 79;
}

// As long as leaves room for the text after it.
std::string barOf(std::uint64_t done, std::uint64_t total, int lineWidth)
{
    if (total == 0)
        return "";
    const std::size_t length = std::min(30, lineWidth / 3);
    const double part = std::min(1.0, double(done) / double(total));
    std::string text = "[" + std::string(std::size_t(part * double(length)), '#');
    text.resize(length + 1, ' ');
    return text + "] " + std::to_string(int(part * 100)) + " %  ";
}

} // namespace

Progress::Progress(bool isWanted) noexcept : _isWanted(isWanted && isatty(STDERR_FILENO)) {}

Progress::~Progress()
{
    if (_isDrawn)
        std::fprintf(stderr, "\r%*s\r", widthOfLine(), "");
}

void Progress::show(std::uint64_t done, std::uint64_t total, const std::string& message)
{
    if (!_isWanted || Clock::now() < _next)
        return;
    _next = Clock::now() + std::chrono::milliseconds(100);
    _isDrawn = true;
    const int width = widthOfLine();
    std::fprintf(stderr, "\r%-*.*s", width, width, (barOf(done, total, width) + message).c_str());
    std::fflush(stderr);
}

} // namespace Tools
