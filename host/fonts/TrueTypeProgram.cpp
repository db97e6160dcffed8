#include <host/fonts/TrueTypeProgram.h>

#include <host/fonts/GlyphNames.h>
#include <host/fonts/data/ProgramNames.h>

#include <algorithm>
#include <map>

namespace Host {

namespace {

// The first of `count` rows of `rowSize` bytes whose first number isn't below `code`; `count` when there is none. The
// rows ascend; of rows that don't any one comes out.
std::size_t findRow(
    const BinaryView& rows, std::size_t count, std::size_t rowSize, std::size_t codeSize, std::uint32_t code)
{
    std::size_t low = 0;
    while (low < count) {
        const std::size_t middle = low + (count - low) / 2;
        if (rows.number(middle * rowSize, codeSize) < code)
            low = middle + 1;
        else
            count = middle;
    }
    return low;
}

// Format 4: segments of ends, starts, differences and offsets, all of 2 bytes.
std::uint32_t findInSegments(const BinaryView& table, std::uint32_t code)
{
    const std::size_t width = table.word(6) & ~1u; // of each of the four lists, in bytes
    const std::size_t ends = 14, starts = ends + width + 2, deltas = starts + width, offsets = deltas + width;
    const std::size_t row = 2 * findRow(table.part(ends), width / 2, 2, 2, code);
    if (row >= width || code > 0xFFFF || table.word(starts + row) > code)
        return 0;
    const std::uint32_t delta = table.word(deltas + row);
    const std::uint32_t offset = table.word(offsets + row);
    if (offset == 0)
        return (code + delta) & 0xFFFF;
    const std::uint32_t glyph = table.word(offsets + row + offset + 2 * (code - table.word(starts + row)));
    return glyph == 0 ? 0 : (glyph + delta) & 0xFFFF;
}

// Format 12: groups of first code, last code and first glyph.
std::uint32_t findInGroups(const BinaryView& table, std::uint32_t code)
{
    constexpr std::size_t groups = 16, groupSize = 12;
    const std::size_t count = std::min<std::size_t>(table.doubleWord(12), table.size() / groupSize);
    const std::size_t row = findRow(table.part(groups + 4), count, groupSize, 4, code);
    const BinaryView group = table.part(groups + row * groupSize, groupSize);
    return row < count && code >= group.doubleWord(0) ? group.doubleWord(8) + (code - group.doubleWord(0)) : 0;
}

std::uint32_t findCode(const BinaryView& table, std::uint32_t code)
{
    switch (table.word(0)) {
    case 0: return code < 256 ? table.byte(6 + code) : 0;
    case 4: return findInSegments(table, code);
    case 6: return code - table.word(6) < table.word(8) ? table.word(10 + 2 * (code - table.word(6))) : 0;
    case 12: return findInGroups(table, code);
    default: return 0;
    }
}

} // namespace

std::optional<TrueTypeProgram> TrueTypeProgram::read(std::string_view program) noexcept
{
    TrueTypeProgram result;
    if (!result.readTables(BinaryView(program)))
        return {};
    return result;
}

bool TrueTypeProgram::readTables(BinaryView program) noexcept
{
    const bool isCollection = program.bytes().starts_with("ttcf");
    const std::size_t start = isCollection ? program.doubleWord(12) : 0; // that of the first font
    const std::uint32_t count = program.word(start + 4);
    std::map<std::string_view, BinaryView> tables;
    for (std::size_t i = 0; i < count; ++i) {
        const BinaryView row = program.part(start + 12 + 16 * i, 16);
        tables.emplace(row.part(0, 4).bytes(), program.part(row.doubleWord(8), row.doubleWord(12)));
    }
    _outlines = tables["glyf"];
    _places = tables["loca"];
    _compact = tables["CFF "];
    _arePlacesLong = tables["head"].word(50) != 0;
    _glyphCount = tables["maxp"].word(4);
    readCodes(tables["cmap"]);
    readNames(tables["post"]);
    return _compact.size() > 0 || _places.size() > 0;
}

void TrueTypeProgram::readCodes(BinaryView table) noexcept
{
    for (std::size_t i = 0; i < table.word(2); ++i) {
        const BinaryView row = table.part(4 + 8 * i, 8);
        const std::uint32_t platform = row.word(0), encoding = row.word(2);
        const BinaryView codes = table.part(row.doubleWord(4));
        const auto put = [&](Codes kind) { _codes[std::size_t(kind)] = codes; };
        if (platform == 3 && encoding == 0)
            put(Codes::Symbol);
        else if (platform == 1 && encoding == 0)
            put(Codes::MacOs);
        else if ((platform == 3 && (encoding == 1 || encoding == 10)) || (platform == 0 && encoding < 5))
            put(Codes::Unicode);
    }
}

void TrueTypeProgram::readNames(BinaryView table) noexcept
{
    constexpr std::uint32_t standardNames = 0x10000, ownNames = 0x20000;
    const std::uint32_t version = table.doubleWord(0);
    const std::vector<std::string_view> standard = wordsOf(FontData::trueTypeNames);
    for (std::uint32_t glyph = 0; version == standardNames && glyph < standard.size(); ++glyph)
        _names.emplace(standard[glyph], glyph);
    if (version != ownNames)
        return;
    const std::uint32_t count = table.word(32);
    std::vector<std::string_view> own;
    for (std::size_t at = 34 + 2 * std::size_t(count); at < table.size(); at += 1 + table.byte(at))
        own.push_back(table.part(at + 1, table.byte(at)).bytes());
    for (std::uint32_t glyph = 0; glyph < count; ++glyph) {
        const std::uint32_t index = table.word(34 + 2 * std::size_t(glyph));
        if (index < standard.size())
            _names.emplace(standard[index], glyph);
        else if (index - standard.size() < own.size())
            _names.emplace(own[index - standard.size()], glyph);
    }
}

std::uint32_t TrueTypeProgram::find(Codes codes, std::uint32_t code) const noexcept
{
    return findCode(_codes[std::size_t(codes)], code);
}

std::uint32_t TrueTypeProgram::find(const std::string& name) const noexcept
{
    const auto found = _names.find(name);
    return found != _names.end() ? found->second : 0;
}

GlyphState TrueTypeProgram::state(std::uint32_t glyph) const noexcept
{
    constexpr std::size_t headerSize = 10; // of a glyph
    if (glyph == 0 || glyph >= _glyphCount)
        return GlyphState::Missing;
    const std::size_t width = _arePlacesLong ? 4 : 2, unit = _arePlacesLong ? 1 : 2;
    const std::size_t begin = _places.number(glyph * width, width) * unit;
    const std::size_t end = _places.number((glyph + 1) * width, width) * unit;
    const bool isDrawn = end > begin + headerSize && end <= _outlines.size() && _outlines.word(begin) != 0;
    return isDrawn ? GlyphState::Drawn : GlyphState::Blank;
}

} // namespace Host
