#include <host/fonts/TextFont.h>

#include <host/fonts/CodeMap.h>
#include <host/fonts/FontValues.h>
#include <host/fonts/GlyphNames.h>
#include <host/fonts/TrueTypeProgram.h>
#include <platform/Limits.h>

#include <algorithm>
#include <cctype>
#include <map>

namespace Host {

namespace {

constexpr std::uint32_t fixedPitch = 1, serif = 2, symbolic = 4, italic = 64, forceBold = 1 << 18; // of descriptors
constexpr double leastHeight = 500, mostHeight = 4000; // of lines; what fonts say beyond is no height
constexpr char32_t noBreakSpace = 0xA0, softHyphen = 0xAD;
constexpr double mostWidth = 100000;
// That a composite font may tell: lists may be shared, and ranges overlap. What is beyond is not read.
constexpr std::size_t mostWidths = 16 * 65536;

bool isHeight(const LineHeights& heights)
{
    return heights.height() >= leastHeight && heights.height() <= mostHeight;
}

bool isBlank(char32_t c)
{
    return c == ' ' || c == noBreakSpace || c == 0x3000;
}

double widthOf(std::optional<double> width)
{
    return width && *width >= 0 && *width <= mostWidth ? *width : 0;
}

} // namespace

// Reads one font.
class TextFont::Reading {
public:
    Reading(const Ref<PDF::Document>& document, const PDF::Dictionary& font, Budget& budget)
        : _document(document), _dictionary(font), _budget(budget)
    {
    }

    Result<TextFont> read()
    {
        _font._name = nameAt(*_document, _dictionary, "BaseFont");
        const std::string kind = nameAt(*_document, _dictionary, "Subtype");
        const bool isComposite = kind == "Type0";
        if (kind == "Type3")
            return unusableFont("is of Type 3, whose glyphs are drawings");
        readCharacters();
        const std::optional<Refusal> refusal = isComposite ? readComposite() : readSimple(kind == "TrueType");
        if (refusal)
            return *refusal;
        if (_font._codes.empty())
            return unusableFont("has no character that can be told");
        return std::move(_font);
    }

private:
    void readCharacters()
    {
        const Ref<PDF::Stream> map = valueAt<PDF::Stream>(*_document, _dictionary, "ToUnicode");
        const auto text = map ? dataOf(_document, map, Limits::maxCodeMap, _budget) : std::nullopt;
        if (text)
            _characters = CodeMap(*text).characters();
    }
    char32_t characterOf(std::uint32_t code) const
    {
        const CodeRanges::Range* range = _characters.find(code);
        return range && !range->isText ? range->target + (code - range->first) : 0;
    }

    // ---- What composite and simple fonts have alike

    void readDescriptor(const PDF::Dictionary& font)
    {
        const Ref<PDF::Dictionary> descriptor = valueAt<PDF::Dictionary>(*_document, font, "FontDescriptor");
        _standard = StandardFont::find(_font._name);
        if (_standard)
            _font._heights = TextFont::standard(*_standard)._heights;
        if (!descriptor)
            return;
        const std::optional<std::int32_t> flags = countOf(*_document, descriptor->find(::String::create("Flags")));
        _font._descriptorFlags = static_cast<std::uint32_t>(flags.value_or(0));
        readHeights(*descriptor);
        _missingWidth = widthOf(numberAt(*_document, *descriptor, "MissingWidth"));
        for (const char* key : {"FontFile", "FontFile2", "FontFile3"})
            _isEmbedded |= bool(valueAt<PDF::Stream>(*_document, *descriptor, key));
        if (hasTag(_font._name))
            _glyphNames = textAt(*_document, *descriptor, "CharSet");
        if (const auto file = valueAt<PDF::Stream>(*_document, *descriptor, "FontFile2"); file && hasTag(_font._name)) {
            _data = dataOf(_document, file, Limits::maxFontProgram, _budget).value_or("");
            _program = TrueTypeProgram::read(_data);
        }
    }

    // The box around all glyphs makes the height, and what is below the baseline is as the descriptor says.
    void readHeights(const PDF::Dictionary& descriptor)
    {
        const std::vector<double> box = numbersAt(*_document, descriptor, "FontBBox", 4);
        const double descent = numberAt(*_document, descriptor, "Descent").value_or(0);
        const double ascent = numberAt(*_document, descriptor, "Ascent").value_or(0);
        const double below = -std::abs(descent);
        const LineHeights byBox = box.empty()
            ? LineHeights{0, 0}
            : LineHeights{box[3] - box[1] + (below < 0 ? below : box[1]), below < 0 ? below : box[1]};
        const LineHeights itself{ascent, below};
        if (isHeight(byBox) && byBox.ascent > 0)
            _font._heights = byBox;
        else if (isHeight(itself) && ascent > 0)
            _font._heights = itself;
    }

    bool isSymbolic() const { return (_font._descriptorFlags & symbolic) != 0; }

    void add(char32_t character, FontCode code)
    {
        if (character >= ' ' && code.width > 0)
            _font.add(character, code);
    }

    // ---- Simple fonts

    std::optional<Refusal> readSimple(bool isTrueType)
    {
        readDescriptor(_dictionary);
        const Ref<PDF::Array> widths = valueAt<PDF::Array>(*_document, _dictionary, "Widths");
        if (!widths && !_standard)
            return unusableFont("has no widths");
        const CodeNames names = readNames();
        const double first = numberAt(*_document, _dictionary, "FirstChar").value_or(0);
        for (std::uint16_t code = 0; code < names.size(); ++code) {
            const char32_t character = characterOfCode(code, names[code]);
            if (character == 0 || !hasGlyph(code, names[code], character, isTrueType))
                continue;
            const double place = code - first;
            double width = _missingWidth;
            if (widths && place >= 0 && place < double(widths->size()))
                width = widthOf(numberOf(*_document, widths->get(static_cast<std::uint64_t>(place))));
            else if (!widths)
                width = _standard->width(names[code]).value_or(0);
            add(character, {code, 1, width});
        }
        return {};
    }

    CodeNames readNames()
    {
        const Ref<PDF::Value> entry = PDF::resolve(*_document, _dictionary.find(::String::create("Encoding")));
        const Ref<PDF::Dictionary> changes = PDF::valueAs<PDF::Dictionary>(entry);
        std::optional<BaseEncoding> base = findEncoding(
            changes ? nameAt(*_document, *changes, "BaseEncoding") : nameOf(*_document, entry));
        const bool isOwn = _standard && _standard->encoding() != BaseEncoding::Standard;
        if (isOwn)
            base = _standard->encoding();
        else if (!base && !isSymbolic() && (changes || !_isEmbedded))
            base = BaseEncoding::Standard;
        CodeNames names = base ? namesOf(*base) : CodeNames();
        const Ref<PDF::Array> differences = changes ? valueAt<PDF::Array>(*_document, *changes, "Differences")
                                                    : nullptr;
        std::int64_t code = 0;
        for (std::uint64_t i = 0; differences && i < differences->size(); ++i) {
            const Ref<PDF::Value> element = differences->get(i);
            if (const std::optional<std::int32_t> number = countOf(*_document, element))
                code = *number;
            else if (std::string name = nameOf(*_document, element); code >= 0 && code < 256)
                names[static_cast<std::size_t>(code++)] = std::move(name);
        }
        return names;
    }

    // What readers give back for the code; 0 when that can't be told.
    char32_t characterOfCode(std::uint16_t code, const std::string& name) const
    {
        if (const char32_t character = characterOf(code))
            return character;
        const bool isDingbats = _standard && _standard->encoding() == BaseEncoding::ZapfDingbats;
        return isDingbats ? characterOfDingbat(name) : characterOfGlyph(name);
    }

    bool hasGlyph(std::uint16_t code, const std::string& name, char32_t character, bool isTrueType) const
    {
        if (!_isEmbedded && _standard)
            return name.empty() || _standard->width(name).has_value();
        if (_isEmbedded && !isTrueType && !_glyphNames.empty())
            return (_glyphNames + '/').find('/' + name + '/') != std::string::npos;
        if (!_program || !isTrueType)
            return true;
        using Codes = TrueTypeProgram::Codes;
        std::uint32_t glyph = 0;
        if (!isSymbolic() && !name.empty()) {
            glyph = _program->find(Codes::Unicode, characterOfGlyph(name));
            if (const auto macOs = macOsCode(name); glyph == 0 && macOs)
                glyph = _program->find(Codes::MacOs, *macOs);
            if (glyph == 0)
                glyph = _program->find(name);
        }
        for (const std::uint32_t candidate : {std::uint32_t(code), 0xF000u + code})
            if (glyph == 0)
                glyph = _program->find(Codes::Symbol, candidate);
        if (glyph == 0)
            glyph = _program->find(Codes::MacOs, code);
        return isThere(glyph, character);
    }
    bool isThere(std::uint32_t glyph, char32_t character) const
    {
        const GlyphState state = _program->state(glyph);
        return state == GlyphState::Drawn || (state == GlyphState::Blank && isBlank(character));
    }

    // ---- Composite fonts

    std::optional<Refusal> readComposite()
    {
        if (nameAt(*_document, _dictionary, "Encoding") != "Identity-H")
            return unusableFont("has a CMap other than Identity-H");
        if (_characters.ranges().empty())
            return unusableFont("doesn't say which characters it has (ToUnicode)");
        const Ref<PDF::Array> descendants = valueAt<PDF::Array>(*_document, _dictionary, "DescendantFonts");
        const Ref<PDF::Dictionary> font = descendants ? PDF::resolveAs<PDF::Dictionary>(*_document, descendants->get(0))
                                                      : nullptr;
        if (!font)
            return unusableFont("has no descendant", Reason::BrokenRule);
        readDescriptor(*font);
        readCompositeWidths(*font);
        const bool areGlyphs = nameOf(*_document, font->find(::String::create("CIDToGIDMap"))) == "Identity";
        const double usual = numberAt(*_document, *font, "DW").value_or(1000);
        std::size_t count = 0;
        for (const CodeRanges::Range& range : _characters.ranges())
            for (std::uint64_t code = range.first; code <= range.last && code <= 0xFFFF && count <= 0xFFFF; ++code) {
                ++count;
                const auto cid = static_cast<std::uint16_t>(code);
                const auto width = _widths.find(cid);
                const char32_t character = characterOf(cid);
                if (character != 0 && (!_program || !areGlyphs || isThere(cid, character)))
                    add(character, {cid, 2, widthOf(width != _widths.end() ? width->second : usual)});
            }
        return {};
    }

    // `W`: a CID and a list of widths, or two CIDs and a width.
    void readCompositeWidths(const PDF::Dictionary& font)
    {
        constexpr std::int64_t lastCid = 0xFFFF;
        const Ref<PDF::Array> array = valueAt<PDF::Array>(*_document, font, "W");
        std::size_t left = mostWidths;
        for (std::uint64_t i = 0; array && i + 1 < array->size();) {
            const std::int64_t first = countOf(*_document, array->get(i)).value_or(-1);
            if (first < 0)
                return;
            if (const auto list = PDF::resolveAs<PDF::Array>(*_document, array->get(i + 1))) {
                std::int64_t cid = first;
                for (std::uint64_t k = 0; k < list->size() && cid <= lastCid && left > 0; ++k, ++cid, --left)
                    _widths[std::uint16_t(cid)] = numberOf(*_document, list->get(k)).value_or(0);
                i += 2;
            } else if (i + 2 < array->size()) {
                const std::int64_t last = countOf(*_document, array->get(i + 1)).value_or(-1);
                const double width = numberOf(*_document, array->get(i + 2)).value_or(0);
                for (std::int64_t cid = first; cid <= std::min(last, lastCid) && left > 0; ++cid, --left)
                    _widths.try_emplace(std::uint16_t(cid), width);
                i += 3;
            } else {
                return;
            }
        }
    }

    const Ref<PDF::Document>& _document;
    const PDF::Dictionary& _dictionary;
    Budget& _budget;
    TextFont _font;
    CodeRanges _characters;
    std::map<std::uint16_t, double> _widths;
    const StandardFont* _standard = nullptr;
    double _missingWidth = 0;
    bool _isEmbedded = false;
    std::string _glyphNames; // of a subset, "/A/B"; empty where it doesn't say
    std::string _data;       // of the program
    std::optional<TrueTypeProgram> _program;
};

Result<TextFont> TextFont::read(
    const Ref<PDF::Document>& document, const PDF::Dictionary& font, Budget& budget) noexcept
{
    return Reading(document, font, budget).read();
}

TextFont TextFont::standard(const StandardFont& font) noexcept
{
    TextFont result;
    result._name = font.name();
    const FontHeights heights = font.heights();
    const double height = heights.box.top - heights.box.bottom;
    result._heights = {height + heights.descent, heights.descent};
    const bool isLatin = font.encoding() == BaseEncoding::Standard;
    const CodeNames names = namesOf(isLatin ? BaseEncoding::WinAnsi : font.encoding());
    for (std::uint16_t code = 0; code < names.size(); ++code) {
        const bool isDingbats = font.encoding() == BaseEncoding::ZapfDingbats;
        const char32_t character = isDingbats ? characterOfDingbat(names[code]) : characterOfGlyph(names[code]);
        if (const auto width = font.width(names[code]); character != 0 && width)
            result.add(character, {code, 1, *width});
    }
    return result;
}

std::optional<FontCode> TextFont::find(char32_t character) const noexcept
{
    auto found = _codes.find(character);
    if (found == _codes.end() && character == noBreakSpace)
        found = _codes.find(' ');
    if (found == _codes.end() && character == softHyphen)
        found = _codes.find('-');
    return found != _codes.end() ? std::optional(found->second) : std::nullopt;
}

const StandardFont& TextFont::substitute() const noexcept
{
    std::string lower(withoutTag(_name));
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    const auto has = [&lower](const char* word) { return lower.find(word) != lower.npos; };
    const bool isBold = has("bold") || has("black") || (_descriptorFlags & forceBold);
    const bool isSlanted = has("italic") || has("oblique") || (_descriptorFlags & italic);
    const bool isTimes = has("times") || ((_descriptorFlags & serif) && !has("helv") && !has("arial"));
    const char* family = has("courier") || (_descriptorFlags & fixedPitch) ? "Courier"
        : isTimes                                                          ? "Times"
                                                                           : "Helvetica";
    std::string name = family;
    const bool isRoman = isTimes && name == "Times";
    if (isBold || isSlanted || isRoman)
        name += std::string("-") + (isBold ? "Bold" : "") + (isSlanted ? isRoman ? "Italic" : "Oblique" : "");
    if (name == "Times-")
        name = "Times-Roman";
    return *StandardFont::find(name);
}

} // namespace Host
