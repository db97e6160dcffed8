#include <host/fonts/BaseEncodings.h>

#include <host/fonts/GlyphNames.h>
#include <host/fonts/data/EncodingData.h>

#include <algorithm>
#include <charconv>

namespace Host {

namespace {

// Indexed by `BaseEncoding`.
constexpr struct {
    std::string_view name;
    std::string_view table;
} encodings[] = {
    {"StandardEncoding", FontData::standardEncoding},
    {"WinAnsiEncoding", FontData::winAnsiEncoding},
    {"MacRomanEncoding", FontData::macRomanEncoding},
    {"PDFDocEncoding", FontData::pdfDocEncoding},
    {{}, FontData::symbolEncoding},
    {{}, FontData::zapfDingbatsEncoding},
};

template <class Visitor>
void forEachCode(std::string_view table, const Visitor& visit)
{
    std::uint8_t code = 0;
    for (const std::string_view word : wordsOf(table)) {
        if (word[0] >= '0' && word[0] <= '9')
            std::from_chars(word.data(), word.data() + word.size(), code);
        else
            visit(code++, word);
    }
}

} // namespace

CodeNames namesOf(BaseEncoding encoding) noexcept
{
    CodeNames names;
    forEachCode(encodings[std::size_t(encoding)].table,
        [&names](std::uint8_t code, std::string_view name) { names[code] = name; });
    return names;
}

std::optional<BaseEncoding> findEncoding(std::string_view name) noexcept
{
    for (std::size_t i = 0; i < std::size(encodings); ++i)
        if (!name.empty() && encodings[i].name == name)
            return BaseEncoding(i);
    return {};
}

std::optional<std::uint8_t> macOsCode(std::string_view glyph) noexcept
{
    std::optional<std::uint8_t> found;
    const auto look = [&](std::uint8_t code, std::string_view name) {
        if (!found && name == glyph)
            found = code;
    };
    forEachCode(FontData::macRomanEncoding, look);
    forEachCode(FontData::macOsAdditions, look);
    return found;
}

} // namespace Host
