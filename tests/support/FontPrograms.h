#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Tests {

// Numbers of so many bytes, the highest first.
inline std::string bigEndian(std::size_t byteCount, std::initializer_list<std::uint64_t> numbers)
{
    std::string bytes;
    for (const std::uint64_t number : numbers)
        for (std::size_t left = byteCount; left-- > 0;)
            bytes += static_cast<char>(number >> (8 * left));
    return bytes;
}
inline std::string words(std::initializer_list<std::uint64_t> numbers)
{
    return bigEndian(2, numbers);
}

// Puts the tables of a TrueType container together.
inline std::string container(const std::map<std::string, std::string>& tables, const std::string& tag = "true")
{
    std::string directory = tag + words({tables.size(), 0, 0, 0});
    std::string data;
    for (const auto& [name, table] : tables) {
        directory += name + bigEndian(4, {0, 12 + 16 * tables.size() + data.size(), table.size()});
        data += table;
    }
    return directory + data;
}

// A TrueType program whose glyphs have an outline or none, by a letter for each: "x" or "-". `codes` are the tables
// that lead to glyphs, each with its platform and its encoding.
struct CodeTable {
    std::uint16_t platform, encoding;
    std::string data;
};
inline std::string trueType(
    const std::string& glyphs, const std::vector<CodeTable>& codes, const std::string& names = "")
{
    std::string outlines, places = bigEndian(4, {0});
    for (const char glyph : glyphs) {
        outlines += glyph == 'x' ? words({1, 0, 0, 0, 0, 0}) : "";
        places += bigEndian(4, {outlines.size()});
    }
    std::string directory = words({0, codes.size()}), data;
    for (const CodeTable& table : codes) {
        directory += words({table.platform, table.encoding}) + bigEndian(4, {4 + 8 * codes.size() + data.size()});
        data += table.data;
    }
    return container({{"head", std::string(50, 0) + words({1, 0})},
        {"maxp", bigEndian(4, {0x10000}) + words({glyphs.size()})}, {"loca", places}, {"glyf", outlines},
        {"cmap", directory + data}, {"post", names}});
}
// A table of format 6, of glyphs in a row from a code on.
inline std::string codesFrom(std::uint16_t first, std::initializer_list<std::uint64_t> glyphs)
{
    return words({6, 10 + 2 * glyphs.size(), 0, first, glyphs.size()}) + words(glyphs);
}
// One of format 4 with a segment for each code, and the last one that every such table has.
inline std::string segments(const std::map<std::uint16_t, std::uint16_t>& glyphs)
{
    std::string codes, deltas, offsets;
    for (const auto& [code, glyph] : glyphs) {
        codes += words({code});
        deltas += words({std::uint64_t(glyph) - code});
        offsets += words({0});
    }
    const std::string last = words({0xFFFF});
    const std::size_t count = glyphs.size() + 1;
    return words({4, 16 + 8 * count, 0, 2 * count, 0, 0, 0}) + codes + last + words({0}) + codes + last + deltas
        + words({1}) + offsets + words({0});
}

} // namespace Tests
