#pragma once

#include <text/Engine.h>
#include <text/Face.h>
#include <text/SystemFonts.h>

#include <optional>
#include <set>
#include <unordered_map>

namespace Text {

// The engine over font files.
class ShapingEngine final : public Host::TextEngine {
public:
    // Refused as `createEngine`.
    static Host::Result<std::shared_ptr<Host::TextEngine>> create(const Options& options) noexcept;

    // TextEngine
    std::u32string missing(std::u32string_view text) noexcept override;
    bool isRightToLeft(std::u32string_view paragraph) noexcept override;
    std::vector<Glyph> shape(std::u32string_view line, bool isRightToLeft) noexcept override;
    Font font(std::uint32_t font) noexcept override;
    Host::Result<std::string> subset(std::uint32_t font, const std::vector<std::uint32_t>& ids) noexcept override;

private:
    struct Run;
    std::optional<std::uint32_t> fontFor(char32_t character) noexcept;
    std::optional<std::uint32_t> addSystemFont(char32_t character) noexcept;
    std::vector<Run> runsOf(std::u32string_view line, std::size_t first, std::size_t count) noexcept;
    void shapeRun(std::u32string_view line, const Run& run, bool isRightToLeft, std::vector<Glyph>& glyphs) noexcept;

    std::vector<Face> _faces; // those of the options first
    std::uint32_t _givenCount = 0;
    SystemFonts _system;
    bool _isSystemUsed = true;
    std::unordered_map<char32_t, std::optional<std::uint32_t>> _fontByCharacter;
    std::unordered_map<std::size_t, std::optional<std::uint32_t>> _systemFaces; // by their numbers
};

} // namespace Text
