#pragma once

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace Tools {

// A bar on standard error, for work that takes longer than a second. Where that is no terminal nothing is drawn.
class Progress {
public:
    explicit Progress(bool isWanted = true) noexcept : _isWanted(isWanted && isatty(STDERR_FILENO)) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress()
    {
        if (_isDrawn)
            std::fprintf(stderr, "\r%*s\r", width, "");
    }

    // May be called as often as one likes: it draws ten times a second at most. `total` is what `done` counts up
    // to; 0 when nobody knows, and then there is no bar, only the words. These, plain ASCII, stand behind the bar
    // and are cut where the line ends.
    void show(std::uint64_t done, std::uint64_t total, const std::string& words)
    {
        if (!_isWanted || Clock::now() < _next)
            return;
        _next = Clock::now() + std::chrono::milliseconds(100);
        _isDrawn = true;
        const std::string line = bar(done, total) + words;
        std::fprintf(stderr, "\r%-*.*s", width, width, line.c_str());
        std::fflush(stderr);
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr int width = 79; // the last of 80 columns would begin a new line

    static std::string bar(std::uint64_t done, std::uint64_t total)
    {
        if (total == 0)
            return "";
        constexpr std::size_t length = 30;
        const double part = std::min(1.0, double(done) / double(total));
        std::string text = "[" + std::string(std::size_t(part * length), '#');
        text.resize(length + 1, ' ');
        return text + "] " + std::to_string(int(part * 100)) + " %  ";
    }

    const bool _isWanted;
    Clock::time_point _next = Clock::now() + std::chrono::seconds(1);
    bool _isDrawn = false;
};

} // namespace Tools
