#pragma once

#include <cstdint>
#include <string_view>

namespace Text {

// How the codes of a composite font lead to the glyphs of a CFF program.
enum class GlyphCodes {
    Numbers,    // they are the glyphs' numbers
    CidsAsSuch, // they are CIDs, and these are the glyphs' numbers
    OtherCids,
};
GlyphCodes codesOf(std::string_view program, std::uint32_t glyphCount) noexcept;

} // namespace Text
