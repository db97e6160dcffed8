#include <host/fonts/GlyphNames.h>

#include <host/base/Characters.h>
#include <host/fonts/data/GlyphCharacters.h>

#include <algorithm>

namespace Host {

namespace {

constexpr char32_t highest = 0x10FFFF;
constexpr std::size_t digitsOfUnit = 4;

// The character of hexadecimal digits; 0 when they are none, or of a character that no text has.
char32_t characterOfDigits(std::string_view digits)
{
    char32_t c = 0;
    for (const char digit : digits) {
        const int value = hexDigit(static_cast<unsigned char>(digit));
        if (value < 0 || c > highest)
            return 0;
        c = c * 16 + static_cast<char32_t>(value);
    }
    const bool isSurrogate = c >= 0xD800 && c <= 0xDFFF;
    return c > highest || isSurrogate ? 0 : c;
}

// Looks for the line "name digits" in a table of such lines, which ascend.
char32_t findLine(std::string_view table, std::string_view name)
{
    while (!table.empty()) {
        const std::size_t begin = table.substr(0, table.size() / 2).rfind('\n') + 1; // of the line in the middle
        const std::size_t end = table.find('\n', begin);
        const std::string_view line = table.substr(begin, end - begin);
        const std::size_t blank = line.find(' ');
        const int order = name.compare(line.substr(0, blank));
        if (order == 0)
            return characterOfDigits(line.substr(blank + 1));
        table = order < 0 ? table.substr(0, begin) : table.substr(end + 1);
    }
    return 0;
}

} // namespace

char32_t characterOfGlyph(std::string_view name) noexcept
{
    if (const char32_t c = findLine(FontData::glyphCharacters, name))
        return c;
    if (name.starts_with("uni") && name.size() == 3 + digitsOfUnit)
        return characterOfDigits(name.substr(3));
    const bool hasDigits = name.starts_with('u') && name.size() > digitsOfUnit && name.size() <= 3 + digitsOfUnit;
    return hasDigits ? characterOfDigits(name.substr(1)) : 0;
}

char32_t characterOfDingbat(std::string_view name) noexcept
{
    const char32_t c = findLine(FontData::dingbatCharacters, name);
    return c != 0 ? c : characterOfGlyph(name);
}

std::vector<std::string_view> wordsOf(std::string_view table) noexcept
{
    std::vector<std::string_view> words;
    while (!table.empty()) {
        const std::size_t length = std::min(table.find(' '), table.size());
        words.push_back(table.substr(0, length));
        table.remove_prefix(std::min(length + 1, table.size()));
    }
    return words;
}

} // namespace Host
