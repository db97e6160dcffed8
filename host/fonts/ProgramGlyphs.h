#pragma once

#include <host/fonts/BaseEncodings.h>

#include <unordered_map>
#include <vector>

namespace Host {

// What a font program has of a glyph.
enum class GlyphState : std::uint8_t {
    Missing,
    Blank, // it draws nothing, as that of a blank does and one whose outline was taken out
    Drawn,
};

// The glyphs of a font program that has them by names or, for a composite font, by CIDs.
struct ProgramGlyphs {
    std::unordered_map<std::string, GlyphState> byName;
    std::vector<GlyphState> byCid; // empty for one that has names alone
    CodeNames encoding;            // built in

    GlyphState find(const std::string& name) const noexcept
    {
        const auto found = byName.find(name);
        return found != byName.end() ? found->second : GlyphState::Missing;
    }
    GlyphState find(std::uint32_t cid) const noexcept { return cid < byCid.size() ? byCid[cid] : GlyphState::Missing; }
};

} // namespace Host
