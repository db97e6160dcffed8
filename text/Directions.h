#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Text {

// Whether the first letter of the text is of a script from right to left.
bool isRightToLeft(std::u32string_view text) noexcept;

// A part of a line in one direction.
struct DirectedPart {
    std::size_t first = 0, count = 0;
    bool isRightToLeft = false;
};
// The parts of a line, from left to right.
std::vector<DirectedPart> partsOf(std::u32string_view line, bool isRightToLeft) noexcept;

} // namespace Text
