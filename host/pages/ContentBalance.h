#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Host {

// What content leaves open when it is drawn to its end.
struct ContentBalance {
    // It closes what it didn't open, or leaves something open that can't be closed after it: a text object, marked
    // content, a path, a string or another value, an inline image.
    bool isBroken = false;
    // How many graphics states it saves and doesn't restore.
    std::size_t openStates = 0;
};

// Reads content as far as it takes to tell, in time that grows with it.
ContentBalance balanceOf(std::span<const std::uint8_t> content) noexcept;

} // namespace Host
