#include <host/fields/EmbeddedFonts.h>

#include <values/Array.h>
#include <values/String.h>

#include <algorithm>
#include <set>

namespace Host {

namespace {

constexpr std::size_t mappingsInBlock = 100; // that a CMap may have

std::string hexadecimal(std::uint32_t number, int digits)
{
    constexpr char all[] = "0123456789ABCDEF";
    std::string text;
    while (digits-- > 0)
        text += all[number >> (4 * digits) & 15];
    return text;
}

std::string utf16(std::u32string_view text)
{
    std::string digits;
    for (const char32_t c : text)
        digits += c > 0xFFFF ? hexadecimal(0xD800 + ((c - 0x10000) >> 10), 4) + hexadecimal(0xDC00 + (c & 0x3FF), 4)
                             : hexadecimal(c, 4);
    return digits;
}

std::string mapOf(const std::vector<std::pair<std::uint32_t, std::u32string>>& texts)
{
    std::string map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    for (std::size_t begin = 0; begin < texts.size(); begin += mappingsInBlock) {
        const std::size_t end = std::min(begin + mappingsInBlock, texts.size());
        map += std::to_string(end - begin) + " beginbfchar\n";
        for (std::size_t i = begin; i < end; ++i)
            map += "<" + hexadecimal(texts[i].first, 4) + "> <" + utf16(texts[i].second) + ">\n";
        map += "endbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

// Six letters that say that it is a subset; they come from the name, so that the same work gives the same file.
std::string tagged(const std::string& name)
{
    std::uint32_t sum = 2166136261u; // FNV-1a
    for (const char byte : name)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619u;
    std::string tag;
    for (int i = 0; i < 6; ++i, sum /= 26)
        tag += static_cast<char>('A' + sum % 26);
    return tag + "+" + (name.empty() ? "Font" : name);
}

Ref<PDF::Dictionary> descriptorOf(const TextEngine::Font& font)
{
    constexpr int fixedPitch = 1, serif = 2, symbolic = 4, italic = 64;
    const int flags = symbolic | (font.isFixedPitch ? fixedPitch : 0) | (font.isSerif ? serif : 0)
        | (font.isItalic ? italic : 0);
    return newDictionary(
        {{"Type", newName("FontDescriptor")}, {"FontName", newName(tagged(font.name))}, {"Flags", newNumber(flags)},
            {"FontBBox", newNumbers({font.box.begin(), font.box.end()})}, {"ItalicAngle", newNumber(font.italicAngle)},
            {"Ascent", newNumber(font.ascent)}, {"Descent", newNumber(font.descent)},
            {"CapHeight", newNumber(font.capHeight)}, {"StemV", newNumber(font.isBold ? 140 : 80)}});
}

Ref<PDF::Value> text(const char* characters)
{
    return PDF::String::create(::String::create(characters));
}

} // namespace

std::optional<Refusal> EmbeddedFonts::prepare(TextEngine& engine, const GlyphTexts& texts,
    const std::vector<TextEngine::Glyph>& glyphs, Programs programs) noexcept
{
    std::set<std::uint32_t> changed;
    for (const TextEngine::Glyph& glyph : glyphs) {
        const auto [font, isNewFont] = _fonts.try_emplace(glyph.font);
        if (isNewFont)
            font->second.facts = engine.font(glyph.font);
        const auto [used, isNewGlyph] = font->second.glyphs.try_emplace(glyph.id);
        std::u32string text = texts.find(glyph.font, glyph.id);
        if (!isNewGlyph && used->second.text == text)
            continue;
        used->second = {glyph.width, std::move(text)};
        font->second.isProgramDue |= isNewGlyph;
        font->second.isChanged = true;
        changed.insert(glyph.font);
    }
    if (programs == Programs::AtOnce)
        for (const std::uint32_t number : changed)
            if (auto refusal = _fonts.at(number).makeProgram(engine, number))
                return refusal;
    return {};
}

std::optional<Refusal> EmbeddedFonts::preparePrograms(TextEngine& engine) noexcept
{
    for (auto& [number, font] : _fonts)
        if (auto refusal = font.makeProgram(engine, number))
            return refusal;
    return {};
}

std::optional<Refusal> EmbeddedFonts::Embedded::makeProgram(TextEngine& engine, std::uint32_t number) noexcept
{
    if (!isProgramDue)
        return {};
    std::vector<std::uint32_t> ids;
    for (const auto& [id, used] : glyphs)
        ids.push_back(id);
    Result<std::string> made = engine.subset(number, ids);
    if (!made)
        return made.refusal();
    program = std::move(*made);
    isProgramDue = false;
    isChanged = true;
    return {};
}

bool EmbeddedFonts::commit(PDF::NewObjects& objects) noexcept
{
    for (auto& [number, font] : _fonts) {
        if (!font.reference && !create(font, objects))
            return false;
        if (!font.isChanged || font.isProgramDue)
            continue;
        if (!update(font))
            return false;
        font.isChanged = false;
        font.program.reset();
    }
    return true;
}

bool EmbeddedFonts::create(Embedded& font, PDF::NewObjects& objects) noexcept
{
    const std::string placeholder(1024, ' '); // long enough to be a compressed stream
    const Ref<PDF::Dictionary> descriptor = descriptorOf(font.facts);
    const Ref<PDF::Dictionary> programEntries = font.facts.isCompact
        ? newDictionary({{"Subtype", newName("CIDFontType0C")}})
        : PDF::Dictionary::create();
    font.programStream = newStream(_document, programEntries, placeholder);
    font.characterMap = newStream(_document, PDF::Dictionary::create(), placeholder);
    if (!font.programStream || !font.characterMap)
        return false;
    descriptor->set(::String::create(font.facts.isCompact ? "FontFile3" : "FontFile2"),
        objects.add(font.programStream));
    font.descendant = newDictionary({{"Type", newName("Font")},
        {"Subtype", newName(font.facts.isCompact ? "CIDFontType0" : "CIDFontType2")},
        {"BaseFont", newName(tagged(font.facts.name))},
        {"CIDSystemInfo",
            newDictionary({{"Registry", text("Adobe")}, {"Ordering", text("Identity")}, {"Supplement", newNumber(0)}})},
        {"FontDescriptor", objects.add(descriptor)}, {"DW", newNumber(0)}});
    if (!font.facts.isCompact)
        font.descendant->set(::String::create("CIDToGIDMap"), newName("Identity"));
    const Ref<PDF::Dictionary> composite = newDictionary(
        {{"Type", newName("Font")}, {"Subtype", newName("Type0")}, {"BaseFont", newName(tagged(font.facts.name))},
            {"Encoding", newName("Identity-H")}, {"ToUnicode", objects.add(font.characterMap)}});
    composite->set(::String::create("DescendantFonts"),
        PDF::Array::create(std::vector<Ref<PDF::Value>>{objects.add(font.descendant)}));
    font.reference = objects.add(composite);
    return bool(font.reference);
}

bool EmbeddedFonts::update(Embedded& font) noexcept
{
    if (font.program) {
        if (!font.facts.isCompact)
            font.programStream->dict()->set(::String::create("Length1"), newNumber(double(font.program->size())));
        if (!replaceData(_document, font.programStream, *font.program))
            return false;
    }
    std::vector<Ref<PDF::Value>> widths;
    std::vector<std::pair<std::uint32_t, std::u32string>> texts;
    std::vector<double> list;
    for (auto glyph = font.glyphs.begin(); glyph != font.glyphs.end(); ++glyph) {
        const auto& [id, used] = *glyph;
        if (!used.text.empty())
            texts.emplace_back(id, used.text);
        if (list.empty())
            widths.push_back(newNumber(id));
        list.push_back(used.width);
        const auto next = std::next(glyph);
        if (next == font.glyphs.end() || next->first != id + 1) {
            widths.push_back(newNumbers(list));
            list.clear();
        }
    }
    font.descendant->set(::String::create("W"), PDF::Array::create(widths));
    return replaceData(_document, font.characterMap, mapOf(texts));
}

Ref<PDF::Value> EmbeddedFonts::find(std::uint32_t font) const noexcept
{
    const auto found = _fonts.find(font);
    return found != _fonts.end() ? found->second.reference : nullptr;
}

} // namespace Host
