#pragma once

#include <algorithm>

namespace Host {

// A rectangle with its corners in order. Without area it stands for none.
struct Rectangle {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    double width() const noexcept { return right - left; }
    double height() const noexcept { return top - bottom; }
    bool hasArea() const noexcept { return width() > 0 && height() > 0; }
    // The part that both have; without area when there is none.
    Rectangle within(const Rectangle& other) const noexcept
    {
        return {std::max(left, other.left), std::max(bottom, other.bottom), std::min(right, other.right),
            std::min(top, other.top)};
    }
    bool operator==(const Rectangle&) const noexcept = default;
};

} // namespace Host
