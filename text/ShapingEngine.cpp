#include <text/ShapingEngine.h>

#include <text/Directions.h>

#include <algorithm>

namespace Text {

namespace {

// Fonts that say that they have a character and can't be used, which are tried before it counts as missing.
constexpr int mostTried = 20;

bool isMark(char32_t c)
{
    const hb_unicode_general_category_t category = hb_unicode_general_category(hb_unicode_funcs_get_default(), c);
    return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK
        || category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK
        || category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK || category == HB_UNICODE_GENERAL_CATEGORY_FORMAT;
}

hb_script_t scriptOf(char32_t c)
{
    return hb_unicode_script(hb_unicode_funcs_get_default(), c);
}

bool isOwnScript(hb_script_t script)
{
    return script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN;
}

} // namespace

// Characters of one font and script.
struct ShapingEngine::Run {
    std::size_t first = 0, count = 0;
    std::uint32_t font = 0;
    hb_script_t script = HB_SCRIPT_COMMON;
};

Host::Result<std::shared_ptr<Host::TextEngine>> ShapingEngine::create(const Options& options) noexcept
{
    auto engine = std::make_shared<ShapingEngine>();
    engine->_isSystemUsed = options.areSystemFontsUsed;
    for (const std::string& path : options.fontFiles) {
        Host::Result<Face> face = Face::open(path, 0);
        if (!face)
            return face.refusal().withPrefix("the font file " + path + " ");
        engine->_faces.push_back(std::move(*face));
        ++engine->_givenCount;
    }
    return std::shared_ptr<Host::TextEngine>(std::move(engine));
}

// ---- Fonts

std::optional<std::uint32_t> ShapingEngine::fontFor(char32_t character) noexcept
{
    const auto [place, isNew] = _fontByCharacter.try_emplace(character);
    if (!isNew)
        return place->second;
    std::optional<std::uint32_t> found;
    // Not in those of the system that earlier texts needed: a text looks the same whatever came before it.
    for (std::uint32_t i = 0; i < _givenCount && !found; ++i)
        if (_faces[i].find(character) != 0)
            found = i;
    if (!found && _isSystemUsed)
        found = addSystemFont(character);
    return _fontByCharacter[character] = found;
}

std::optional<std::uint32_t> ShapingEngine::addSystemFont(char32_t character) noexcept
{
    auto place = _system.find(character, 0);
    for (int i = 0; place && i < mostTried; ++i, place = _system.find(character, place->number + 1)) {
        const auto [known, isNew] = _systemFaces.try_emplace(place->number);
        if (isNew)
            if (Host::Result<Face> face = Face::open(place->place.path, place->place.index)) {
                known->second = static_cast<std::uint32_t>(_faces.size());
                _faces.push_back(std::move(*face));
            }
        if (known->second && _faces[*known->second].find(character) != 0)
            return known->second;
    }
    return {};
}

Host::TextEngine::Font ShapingEngine::font(std::uint32_t font) noexcept
{
    return font < _faces.size() ? _faces[font].facts() : Font();
}

Host::Result<std::string> ShapingEngine::subset(std::uint32_t font, const std::vector<std::uint32_t>& ids) noexcept
{
    if (font >= _faces.size())
        return Host::Refusal{Host::Reason::WrongArgument, "there is no such font"};
    return _faces[font].subset(ids);
}

// ---- Text

std::u32string ShapingEngine::missing(std::u32string_view text) noexcept
{
    std::u32string missing;
    std::set<char32_t> seen;
    for (const char32_t c : text)
        if (seen.insert(c).second && !fontFor(c))
            missing += c;
    return missing;
}

bool ShapingEngine::isRightToLeft(std::u32string_view paragraph) noexcept
{
    return Text::isRightToLeft(paragraph);
}

std::vector<Host::TextEngine::Glyph> ShapingEngine::shape(std::u32string_view line, bool isRightToLeft) noexcept
{
    std::vector<Glyph> glyphs;
    for (const DirectedPart& part : partsOf(line, isRightToLeft)) {
        std::vector<Run> runs = runsOf(line, part.first, part.count);
        if (part.isRightToLeft)
            std::reverse(runs.begin(), runs.end());
        for (const Run& run : runs)
            shapeRun(line, run, part.isRightToLeft, glyphs);
    }
    return glyphs;
}

// What has no script of its own goes along with what is before it, and so does the font where it has the character.
std::vector<ShapingEngine::Run> ShapingEngine::runsOf(
    std::u32string_view line, std::size_t first, std::size_t count) noexcept
{
    std::vector<Run> runs;
    for (std::size_t i = first; i < first + count; ++i) {
        const hb_script_t script = scriptOf(line[i]);
        const bool isOwn = isOwnScript(script);
        std::optional<std::uint32_t> font;
        if (!runs.empty() && (!isOwn || isMark(line[i]) || script == runs.back().script)
            && (_faces[runs.back().font].find(line[i]) != 0 || isMark(line[i])))
            font = runs.back().font;
        if (!font)
            font = fontFor(line[i]);
        if (!font && _faces.empty())
            continue;
        const std::uint32_t chosen = font.value_or(runs.empty() ? 0 : runs.back().font);
        if (!runs.empty() && chosen == runs.back().font
            && (!isOwn || script == runs.back().script || !isOwnScript(runs.back().script))) {
            ++runs.back().count;
            if (isOwn)
                runs.back().script = script;
        } else {
            runs.push_back({i, 1, chosen, script});
        }
    }
    return runs;
}

void ShapingEngine::shapeRun(
    std::u32string_view line, const Run& run, bool isRightToLeft, std::vector<Glyph>& glyphs) noexcept
{
    const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(), &hb_buffer_destroy);
    hb_buffer_add_utf32(buffer.get(), reinterpret_cast<const std::uint32_t*>(line.data()), int(line.size()),
        unsigned(run.first), int(run.count));
    hb_buffer_set_direction(buffer.get(), isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer.get(), isOwnScript(run.script) ? run.script : HB_SCRIPT_LATIN);
    hb_buffer_set_language(buffer.get(), hb_language_get_default());
    hb_buffer_set_cluster_level(buffer.get(), HB_BUFFER_CLUSTER_LEVEL_MONOTONE_CHARACTERS);
    hb_buffer_set_flags(buffer.get(), HB_BUFFER_FLAG_REMOVE_DEFAULT_IGNORABLES);
    const Face& face = _faces[run.font];
    hb_shape(face.font(), buffer.get(), nullptr, 0);
    unsigned count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* const places = hb_buffer_get_glyph_positions(buffer.get(), &count);
    std::set<std::size_t> clusters; // where they begin
    for (unsigned i = 0; i < count; ++i)
        clusters.insert(infos[i].cluster);
    for (unsigned i = 0; i < count; ++i) {
        Glyph glyph{run.font, infos[i].codepoint, infos[i].cluster};
        if (i == 0 || infos[i - 1].cluster != infos[i].cluster) {
            const auto next = clusters.upper_bound(glyph.first);
            glyph.count = (next != clusters.end() ? *next : run.first + run.count) - glyph.first;
        }
        glyph.advance = places[i].x_advance * face.scale();
        glyph.width = face.width(glyph.id);
        glyph.right = places[i].x_offset * face.scale();
        glyph.up = places[i].y_offset * face.scale();
        glyphs.push_back(glyph);
    }
}

Host::Result<std::shared_ptr<Host::TextEngine>> createEngine(const Options& options) noexcept
{
    return ShapingEngine::create(options);
}

} // namespace Text
