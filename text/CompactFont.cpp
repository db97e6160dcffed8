#include <text/CompactFont.h>

#include <host/fonts/BinaryView.h>

#include <optional>

namespace Text {

namespace {

using Host::BinaryView;

constexpr std::uint32_t charsetOperator = 15, escape = 12, rosOperator = 30;

// Where an INDEX ends, and its first element.
struct Index {
    std::size_t end = 0;
    BinaryView first;
};

Index readIndex(BinaryView program, std::size_t start)
{
    const std::uint32_t count = program.word(start);
    if (count == 0)
        return {start + 2, {}};
    const std::uint32_t size = program.byte(start + 2);
    const std::size_t data = start + 3 + (std::size_t(count) + 1) * size - 1;
    const auto offset = [&](std::size_t i) { return std::size_t(program.number(start + 3 + i * size, size)); };
    if (size < 1 || size > 4 || offset(1) < offset(0))
        return {program.size(), {}};
    return {data + offset(count), program.part(data + offset(0), offset(1) - offset(0))};
}

struct TopEntries {
    bool isByCids = false;
    std::uint32_t charset = 0; // its offset
};

TopEntries readTop(BinaryView top)
{
    TopEntries entries;
    std::uint32_t last = 0; // operand
    for (std::size_t i = 0; i < top.size();) {
        const std::uint32_t byte = top.byte(i++);
        if (byte == escape) {
            entries.isByCids |= top.byte(i++) == rosOperator;
        } else if (byte <= 21) {
            if (byte == charsetOperator)
                entries.charset = last;
        } else if (byte == 28) {
            last = top.word(i);
            i += 2;
        } else if (byte == 29) {
            last = top.doubleWord(i);
            i += 4;
        } else if (byte == 30) { // a real number, up to a half byte of 15
            while (i < top.size() && (top.byte(i) & 15) != 15 && top.byte(i) >> 4 != 15)
                ++i;
            ++i;
        } else if (byte <= 246) {
            last = byte - 139;
        } else {
            last = (byte <= 250 ? byte - 247 : byte - 251) * 256 + top.byte(i++) + 108;
        }
    }
    return entries;
}

} // namespace

GlyphCodes codesOf(std::string_view bytes, std::uint32_t glyphCount) noexcept
{
    const BinaryView program(bytes);
    const Index names = readIndex(program, program.byte(2));
    const TopEntries top = readTop(readIndex(program, names.end).first);
    if (!top.isByCids)
        return GlyphCodes::Numbers;
    const std::uint32_t format = program.byte(top.charset);
    if (top.charset <= 2 || format > 2)
        return GlyphCodes::OtherCids;
    std::size_t place = top.charset + 1;
    for (std::uint32_t glyph = 1; glyph < glyphCount;) {
        if (place >= program.size() || program.word(place) != glyph)
            return GlyphCodes::OtherCids;
        glyph += 1 + (format == 0 ? 0 : format == 1 ? program.byte(place + 2) : program.word(place + 2));
        place += 2 + format;
    }
    return GlyphCodes::CidsAsSuch;
}

} // namespace Text
