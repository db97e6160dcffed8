#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace Tools {

// A bar on standard error, for work that takes longer than a second. Where that is no terminal nothing is drawn.
class Progress {
public:
    explicit Progress(bool isWanted = true) noexcept;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    // Wipes the bar off.
    ~Progress();

    // May be called as often as one likes: it draws ten times a second at most. `total` is what `done` counts up
    // to; 0 when nobody knows, and then there is no bar, only the message. This, plain ASCII, follows the bar and is
    // cut where the line ends.
    void show(std::uint64_t done, std::uint64_t total, const std::string& message);

private:
    using Clock = std::chrono::steady_clock;

    const bool _isWanted;
    Clock::time_point _next = Clock::now() + std::chrono::seconds(1);
    bool _isDrawn = false;
};

} // namespace Tools
