#pragma once

#include <host/fonts/BinaryView.h>
#include <host/fonts/ProgramGlyphs.h>

#include <array>

namespace Host {

// A TrueType program, or one of that container with the outlines of CFF. It looks into the bytes that it was given.
class TrueTypeProgram {
public:
    // The tables by which codes lead to glyphs.
    enum class Codes : std::size_t {
        Unicode, // by characters
        Symbol,  // by the codes of a symbolic font, often with 0xF000 added
        MacOs,   // by those of Mac OS
        Count,
    };

    // Absent for what is no such program, or has no outlines. The bytes must outlive it.
    static std::optional<TrueTypeProgram> read(std::string_view program) noexcept;

    // The glyph's number; 0 when there is none.
    std::uint32_t find(Codes codes, std::uint32_t code) const noexcept;
    std::uint32_t find(const std::string& name) const noexcept;
    // Number 0 is the glyph for what is missing, and missing itself.
    GlyphState state(std::uint32_t glyph) const noexcept;
    // The CFF program inside; empty when there is none, and then all the above is of use.
    std::string_view compact() const noexcept { return _compact.bytes(); }

private:
    bool readTables(BinaryView program) noexcept;
    void readCodes(BinaryView table) noexcept;
    void readNames(BinaryView table) noexcept;

    std::array<BinaryView, std::size_t(Codes::Count)> _codes;
    std::unordered_map<std::string, std::uint32_t> _names;
    BinaryView _outlines, _places, _compact;
    std::uint32_t _glyphCount = 0;
    bool _arePlacesLong = false;
};

} // namespace Host
