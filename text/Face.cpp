#include <text/Face.h>

#include <host/fonts/BinaryView.h>
#include <text/CompactFont.h>

#include <hb-ot.h>
#include <hb-subset.h>

#include <cmath>

namespace Text {

namespace {

using Host::BinaryView;
using Host::Reason;
using Host::Refusal;

constexpr std::uint32_t restrictedLicence = 2, licenceMask = 0xF, noSubsetting = 0x100, bitmapsOnly = 0x200;

// A table of a font, as long as this lives.
class Table {
public:
    Table(hb_face_t* face, hb_tag_t tag) : _blob(hb_face_reference_table(face, tag)) {}
    ~Table() { hb_blob_destroy(_blob); }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    BinaryView view() const
    {
        unsigned size = 0;
        const char* const data = hb_blob_get_data(_blob, &size);
        return BinaryView(std::string_view(data, size));
    }

private:
    hb_blob_t* const _blob;
};

double signedWord(BinaryView view, std::size_t offset)
{
    return static_cast<std::int16_t>(view.word(offset));
}

std::string postScriptName(hb_face_t* face)
{
    char text[128];
    unsigned size = sizeof text;
    hb_ot_name_get_utf8(face, HB_OT_NAME_ID_POSTSCRIPT_NAME, hb_language_from_string("en", -1), &size, text);
    std::string name;
    for (unsigned i = 0; i < size; ++i)
        if (text[i] > ' ' && text[i] < 127)
            name += text[i];
    return name;
}

} // namespace

Host::Result<Face> Face::open(const std::string& path, unsigned index) noexcept
{
    Face face;
    const std::unique_ptr<hb_blob_t, decltype(&hb_blob_destroy)> blob(
        hb_blob_create_from_file_or_fail(path.c_str()), &hb_blob_destroy);
    if (!blob)
        return Refusal{Reason::Unreadable, "can't be read"};
    face._face.reset(hb_face_create(blob.get(), index), &hb_face_destroy);
    hb_face_t* const held = face._face.get();
    const std::uint32_t count = hb_face_get_glyph_count(held);
    const Table outlines(held, HB_TAG('g', 'l', 'y', 'f')), compact(held, HB_TAG('C', 'F', 'F', ' '));
    if (count == 0 || (outlines.view().size() == 0 && compact.view().size() == 0))
        return Refusal{Reason::Unsupported, "is no OpenType font with outlines"};
    face._facts.isCompact = outlines.view().size() == 0;
    if (face._facts.isCompact) {
        const GlyphCodes codes = codesOf(compact.view().bytes(), count);
        if (codes == GlyphCodes::OtherCids)
            return Refusal{Reason::Unsupported, "has glyphs by other CIDs than their numbers"};
        face._hasCids = codes == GlyphCodes::CidsAsSuch;
    }
    const std::uint32_t licence = Table(held, HB_TAG('O', 'S', '/', '2')).view().word(8);
    if ((licence & licenceMask) == restrictedLicence || (licence & (noSubsetting | bitmapsOnly)) != 0)
        return Refusal{Reason::Unsupported, "must not be embedded as a subset, by its licence"};
    face._font.reset(hb_font_create(held), &hb_font_destroy);
    face.readFacts();
    return face;
}

void Face::readFacts() noexcept
{
    hb_face_t* const face = _face.get();
    hb_font_t* const font = _font.get();
    _scale = 1000.0 / std::max(hb_face_get_upem(face), 1u);
    _facts.name = postScriptName(face);
    hb_font_extents_t extents{};
    hb_font_get_h_extents(font, &extents);
    _facts.ascent = extents.ascender * _scale;
    _facts.descent = extents.descender * _scale;
    const Table head(face, HB_TAG('h', 'e', 'a', 'd'));
    for (std::size_t i = 0; i < _facts.box.size(); ++i)
        _facts.box[i] = signedWord(head.view(), 36 + 2 * i) * _scale;
    if (!(_facts.ascent > 0 && _facts.descent <= 0)) {
        _facts.ascent = _facts.box[3];
        _facts.descent = std::min(_facts.box[1], 0.0);
    }
    hb_position_t capHeight = 0;
    hb_ot_metrics_get_position_with_fallback(font, HB_OT_METRICS_TAG_CAP_HEIGHT, &capHeight);
    _facts.capHeight = capHeight * _scale;
    const Table post(face, HB_TAG('p', 'o', 's', 't'));
    _facts.italicAngle = static_cast<std::int32_t>(post.view().doubleWord(4)) / 65536.0;
    _facts.isFixedPitch = post.view().doubleWord(12) != 0;
    _facts.isItalic = _facts.italicAngle != 0;
    _facts.isBold = hb_style_get_value(font, HB_STYLE_TAG_WEIGHT) >= 600;
}

std::uint32_t Face::find(char32_t character) const noexcept
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(_font.get(), character, &glyph) ? glyph : 0;
}

double Face::width(std::uint32_t glyph) const noexcept
{
    return hb_font_get_glyph_h_advance(_font.get(), glyph) * _scale;
}

Host::Result<std::string> Face::subset(const std::vector<std::uint32_t>& glyphs) const noexcept
{
    const Refusal failed{Reason::SystemFailure, "no subset of the font " + _facts.name + " can be made"};
    const std::unique_ptr<hb_subset_input_t, decltype(&hb_subset_input_destroy)> input(
        hb_subset_input_create_or_fail(), &hb_subset_input_destroy);
    if (!input)
        return failed;
    for (const std::uint32_t glyph : glyphs)
        hb_set_add(hb_subset_input_glyph_set(input.get()), glyph);
    // CIDs stay what they are whatever the numbers of the glyphs become.
    const unsigned keptNumbers = _hasCids ? HB_SUBSET_FLAGS_DEFAULT : HB_SUBSET_FLAGS_RETAIN_GIDS;
    hb_subset_input_set_flags(input.get(), keptNumbers | HB_SUBSET_FLAGS_NO_HINTING);
    // Of no use where glyphs are named by their numbers, and those of other shapes of a font than its usual one.
    hb_set_t* const dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const char* tag : {"GSUB", "GPOS", "GDEF", "cmap", "name", "post", "OS/2", "gvar", "fvar", "avar", "HVAR",
             "MVAR", "STAT", "DSIG", "BASE", "VORG", "vhea", "vmtx", "cvar", "kern", "meta"})
        hb_set_add(dropped, hb_tag_from_string(tag, -1));
    const std::unique_ptr<hb_face_t, decltype(&hb_face_destroy)> made(
        hb_subset_or_fail(_face.get(), input.get()), &hb_face_destroy);
    if (!made)
        return failed;
    if (_facts.isCompact) {
        const Table program(made.get(), HB_TAG('C', 'F', 'F', ' '));
        return std::string(program.view().bytes());
    }
    const std::unique_ptr<hb_blob_t, decltype(&hb_blob_destroy)> blob(
        hb_face_reference_blob(made.get()), &hb_blob_destroy);
    unsigned size = 0;
    const char* const data = hb_blob_get_data(blob.get(), &size);
    return size != 0 ? Host::Result<std::string>(std::string(data, size)) : failed;
}

} // namespace Text
