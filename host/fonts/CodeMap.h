#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

class PostScriptReader;

// Codes in ranges, and what they lead to.
class CodeRanges {
public:
    struct Range {
        std::uint32_t first = 0, last = 0; // codes
        std::uint32_t target = 0;          // that of the first; those of the others follow it
        std::uint8_t codeLength = 0;       // in bytes
        bool isText = false;               // they lead to several characters each, which `target` doesn't tell
    };

    // A range whose last code is before its first has no codes.
    void add(Range range) noexcept;
    // To be called after the last range: of several ones with the same code the one that begins first has it.
    void settle() noexcept;

    // Ascending, no code twice.
    const std::vector<Range>& ranges() const noexcept { return _ranges; }
    // The range with the code; null when there is none.
    const Range* find(std::uint32_t code) const noexcept;

private:
    std::vector<Range> _ranges;
};

// What a CMap says: the glyphs, as CIDs, that codes lead to, or the characters. Where codes may lie is left out.
class CodeMap {
public:
    // What is no CMap gives an empty one. The time is linear in the text, but for the sorting.
    explicit CodeMap(std::string_view text) noexcept;
    // The one where each code of two bytes is the glyph's number: Identity-H.
    static CodeMap identity() noexcept;

    const CodeRanges& glyphs() const noexcept { return _glyphs; }
    const CodeRanges& characters() const noexcept { return _characters; }
    // For text from top to bottom.
    bool isVertical() const noexcept { return _isVertical; }
    // The name of a CMap that this one only changes; empty for none, and for Identity-H where nothing is changed.
    const std::string& base() const noexcept { return _base; }

private:
    CodeMap() noexcept = default;
    enum class Target { Glyph, Character };
    void readBlock(PostScriptReader& reader, bool areRanges, Target target) noexcept;
    void readList(PostScriptReader& reader, CodeRanges::Range range) noexcept;

    CodeRanges _glyphs;
    CodeRanges _characters;
    bool _isVertical = false;
    std::string _base;
};

} // namespace Host
