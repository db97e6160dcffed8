#include <text/Directions.h>

#include <fribidi.h>

#include <algorithm>

namespace Text {

namespace {

static_assert(sizeof(FriBidiChar) == sizeof(char32_t));

const FriBidiChar* charactersOf(std::u32string_view text)
{
    return reinterpret_cast<const FriBidiChar*>(text.data());
}

struct Level {
    DirectedPart part;
    FriBidiLevel level;
};

} // namespace

bool isRightToLeft(std::u32string_view text) noexcept
{
    const auto size = static_cast<FriBidiStrIndex>(text.size());
    std::vector<FriBidiCharType> types(text.size());
    fribidi_get_bidi_types(charactersOf(text), size, types.data());
    return FRIBIDI_IS_RTL(fribidi_get_par_direction(types.data(), size));
}

std::vector<DirectedPart> partsOf(std::u32string_view line, bool isRightToLeft) noexcept
{
    const auto size = static_cast<FriBidiStrIndex>(line.size());
    std::vector<FriBidiCharType> types(line.size());
    std::vector<FriBidiBracketType> brackets(line.size());
    std::vector<FriBidiLevel> levels(line.size());
    fribidi_get_bidi_types(charactersOf(line), size, types.data());
    fribidi_get_bracket_types(charactersOf(line), size, types.data(), brackets.data());
    FriBidiParType direction = isRightToLeft ? FRIBIDI_PAR_RTL : FRIBIDI_PAR_LTR;
    if (fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), size, &direction, levels.data()) == 0)
        return {{0, line.size(), isRightToLeft}};
    std::vector<Level> parts;
    for (std::size_t i = 0; i < line.size(); ++i)
        if (parts.empty() || parts.back().level != levels[i])
            parts.push_back({{i, 1, levels[i] % 2 == 1}, levels[i]});
        else
            ++parts.back().part.count;
    // From the innermost on, what is in the other direction is turned around.
    FriBidiLevel highest = 0;
    for (const Level& part : parts)
        highest = std::max(highest, part.level);
    for (int level = highest; level > 0; --level)
        for (auto begin = parts.begin(); begin != parts.end();) {
            begin = std::find_if(begin, parts.end(), [level](const Level& part) { return part.level >= level; });
            const auto end = std::find_if(
                begin, parts.end(), [level](const Level& part) { return part.level < level; });
            std::reverse(begin, end);
            begin = end;
        }
    std::vector<DirectedPart> result;
    for (const Level& part : parts)
        result.push_back(part.part);
    return result;
}

} // namespace Text
