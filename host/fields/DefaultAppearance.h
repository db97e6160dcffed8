#pragma once

#include <string>
#include <string_view>

namespace Host {

// What `DA` says of how text is drawn. All else in it is left out: a matrix has no use where text is laid out anew, and
// what isn't known could paint.
struct DefaultAppearance {
    std::string font;          // its name among the resources, decoded; empty for none
    double size = 0;           // 0 for the one that fits, and for what is no size
    bool hasOddSize = false;   // which is the latter
    std::string color = "0 g"; // the operation

    static DefaultAppearance read(std::string_view text) noexcept;
};

} // namespace Host
