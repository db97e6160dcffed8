#include <host/fonts/CodeMap.h>

#include <host/fonts/GlyphNames.h>
#include <host/fonts/PostScriptReader.h>

#include <algorithm>

namespace Host {

namespace {

using Part = PostScriptPart;
using Range = CodeRanges::Range;

constexpr std::size_t longestCode = 4;
constexpr Range identityRange = {0, 0xFFFF, 0, 2, false};

std::uint32_t bigEndian(std::string_view bytes)
{
    std::uint32_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

bool isCode(const Part& part)
{
    return part.kind == Part::Kind::String && !part.text.empty() && part.text.size() <= longestCode;
}

// The one character that a text in UTF-16 or the name of a glyph consists of; absent when it isn't one.
std::optional<char32_t> characterOf(const Part& part)
{
    if (part.kind == Part::Kind::Name)
        return characterOfGlyph(part.text);
    if (part.kind != Part::Kind::String || part.text.empty())
        return {};
    const std::string_view bytes = part.text;
    const char32_t first = bigEndian(bytes.substr(0, 2));
    if (bytes.size() <= 2)
        return first;
    const char32_t second = bigEndian(bytes.substr(2));
    const bool isPair = bytes.size() == 4 && first >= 0xD800 && first < 0xDC00 && second >= 0xDC00 && second < 0xE000;
    return isPair ? std::optional(0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00)) : std::nullopt;
}

Range withTarget(Range range, const Part& to)
{
    const std::optional<char32_t> character = characterOf(to);
    range.target = character.value_or(0);
    range.isText = !character;
    return range;
}

} // namespace

void CodeRanges::add(Range range) noexcept
{
    if (range.last >= range.first)
        _ranges.push_back(range);
}

void CodeRanges::settle() noexcept
{
    std::stable_sort(_ranges.begin(), _ranges.end(), [](const Range& a, const Range& b) { return a.first < b.first; });
    std::size_t kept = 0;
    std::uint64_t next = 0; // the first code that no range has so far
    for (Range range : _ranges) {
        if (range.last < next)
            continue;
        const auto taken = static_cast<std::uint32_t>(std::max<std::uint64_t>(next, range.first) - range.first);
        range.first += taken;
        range.target += taken;
        next = std::uint64_t(range.last) + 1;
        _ranges[kept++] = range;
    }
    _ranges.resize(kept);
}

const Range* CodeRanges::find(std::uint32_t code) const noexcept
{
    const auto isBefore = [](std::uint32_t wanted, const Range& range) { return wanted < range.first; };
    const auto after = std::upper_bound(_ranges.begin(), _ranges.end(), code, isBefore);
    return after != _ranges.begin() && code <= after[-1].last ? &after[-1] : nullptr;
}

CodeMap::CodeMap(std::string_view text) noexcept
{
    PostScriptReader reader(text);
    Part before;
    for (Part part = reader.next(); part.kind != Part::Kind::End; part = reader.next()) {
        if (part.isWord("begincidrange") || part.isWord("begincidchar"))
            readBlock(reader, part.isWord("begincidrange"), Target::Glyph);
        else if (part.isWord("beginbfrange") || part.isWord("beginbfchar"))
            readBlock(reader, part.isWord("beginbfrange"), Target::Character);
        else if (part.isWord("usecmap"))
            _base = before.text;
        else if (before.kind == Part::Kind::Name && before.text == "WMode")
            _isVertical = part.number(0) == 1;
        before = std::move(part);
    }
    if (_base == "Identity-H" && _glyphs.ranges().empty()) {
        _glyphs.add(identityRange);
        _base.clear();
    }
    _glyphs.settle();
    _characters.settle();
}

CodeMap CodeMap::identity() noexcept
{
    CodeMap map;
    map._glyphs.add(identityRange);
    return map;
}

// From after the word that begins a block up to the first thing that doesn't belong into it.
void CodeMap::readBlock(PostScriptReader& reader, bool areRanges, Target target) noexcept
{
    for (;;) {
        const Part first = reader.next();
        const Part last = areRanges && isCode(first) ? reader.next() : first;
        if (!isCode(first) || !isCode(last))
            return;
        Range range{
            bigEndian(first.text), bigEndian(last.text), 0, static_cast<std::uint8_t>(first.text.size()), false};
        const Part to = reader.next();
        if (to.kind == Part::Kind::End)
            return;
        if (target == Target::Character && to.isMark("[")) {
            readList(reader, range);
        } else if (target == Target::Character) {
            _characters.add(withTarget(range, to));
        } else if (const long glyph = to.number(-1); glyph >= 0 && glyph <= 0xFFFF) {
            range.target = static_cast<std::uint32_t>(glyph);
            _glyphs.add(range);
        }
    }
}

// From after the bracket: a character for each code of the range.
void CodeMap::readList(PostScriptReader& reader, Range range) noexcept
{
    Part to = reader.next();
    for (std::uint64_t code = range.first; to.kind != Part::Kind::End && !to.isMark("]"); ++code, to = reader.next()) {
        const auto single = static_cast<std::uint32_t>(code);
        if (code <= range.last)
            _characters.add(withTarget({single, single, 0, range.codeLength, false}, to));
    }
}

} // namespace Host
