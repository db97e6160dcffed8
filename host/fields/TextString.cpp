#include <host/fields/TextString.h>

#include <host/base/Characters.h>
#include <host/base/Utf8.h>
#include <platform/Utf8.h>
#include <values/Exact.h>

#include <algorithm>
#include <vector>

namespace Host {

namespace {

using namespace Libraries::Files;

constexpr char32_t replacement = 0xFFFD;
constexpr std::string_view bigEndianMark = "\xFE\xFF";
constexpr std::string_view littleEndianMark = "\xFF\xFE";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// The document encoding where it isn't Latin-1: bytes 0x18 to 0x1F, and 0x7F to 0xA0.
constexpr unsigned char firstAccent = 0x18;
constexpr char32_t accents[] = {0x2D8, 0x2C7, 0x2C6, 0x2D9, 0x2DD, 0x2DB, 0x2DA, 0x2DC};
constexpr unsigned char firstUpper = 0x7F;
constexpr char32_t upper[] = {
    replacement, 0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x192, 0x2044, // 0x7F to 0x87
    0x2039, 0x203A, 0x2212, 0x2030, 0x201E, 0x201C, 0x201D, 0x2018, // to 0x8F
    0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x141, 0x152, 0x160, // to 0x97
    0x178, 0x17D, 0x131, 0x142, 0x153, 0x161, 0x17E, replacement, 0x20AC // to 0xA0
};
constexpr unsigned char unusedByte = 0xAD;

char32_t characterOfByte(unsigned char byte)
{
    if (byte >= firstAccent && byte < firstAccent + std::size(accents))
        return accents[byte - firstAccent];
    if (byte >= firstUpper && byte < firstUpper + std::size(upper))
        return upper[byte - firstUpper];
    return byte == unusedByte ? replacement : byte;
}

std::string fromDocumentEncoding(std::string_view bytes)
{
    const auto isAscii = [](char c) { return c >= ' ' && c <= '~'; };
    if (std::all_of(bytes.begin(), bytes.end(), isAscii)) // as most are
        return std::string(bytes);
    std::u32string text;
    for (const char byte : bytes)
        text += characterOfByte(static_cast<unsigned char>(byte));
    return toUtf8(text);
}

// `high` is the place of the high byte in each unit: 0 or 1. A byte without a partner is left out.
std::string fromUtf16(std::string_view bytes, std::size_t high)
{
    std::vector<unsigned short> units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(bytes[i + index]); };
        units.push_back(static_cast<unsigned short>(byte(high) << 8 | byte(1 - high)));
    }
    return toUtf8(::String::create(units.data(), 0, units.size()));
}

// The bytes that the characters of a file represent; empty when one of them can't be in a file.
std::string bytesOf(const ::String& text)
{
    std::string bytes;
    bool areAll = true;
    text.forEach([&](char32_t c) {
        const int byte = c < 256 ? static_cast<int>(c) : byteOfElement(c);
        areAll = areAll && byte >= 0;
        bytes += static_cast<char>(byte);
    });
    return areAll ? bytes : std::string();
}

// What every reader reads alike in a literal string: printable ASCII, and what has an escape of its own.
// A backslash is not read back as it is written.
bool isLiteral(char32_t c)
{
    return (c >= ' ' && c < 127 && c != '\\') || c == '\t' || c == '\n' || c == '\r';
}

Ref<PDF::String> bigEndian(const std::u16string& units)
{
    std::string bytes(bigEndianMark);
    for (const char16_t unit : units)
        bytes.append({static_cast<char>(unit >> 8), static_cast<char>(unit)});
    return PDF::String::create(
        TConstArray<std::uint8_t>::create(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

std::u16string toUnits(const ::String& text)
{
    std::u16string units;
    text.forEach([&units](char32_t c) {
        if (c > 0xFFFF)
            units += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
        units += static_cast<char16_t>(c > 0xFFFF ? 0xDC00 + (c & 0x3FF) : c);
    });
    return units;
}

} // namespace

std::string textOfBytes(std::string_view bytes) noexcept
{
    if (bytes.starts_with(bigEndianMark))
        return fromUtf16(bytes.substr(bigEndianMark.size()), 0);
    if (bytes.starts_with(littleEndianMark))
        return fromUtf16(bytes.substr(littleEndianMark.size()), 1);
    if (bytes.starts_with(utf8Mark) && fromUtf8(bytes))
        return std::string(bytes.substr(utf8Mark.size()));
    return fromDocumentEncoding(bytes);
}

std::string textOf(const PDF::String& string) noexcept
{
    if (const auto bytes = PDF::exactBytes(string))
        return textOfBytes({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
    // A text that an application made need not be one of a file, and is the text that is meant.
    const Ref<::String> text = string.value();
    return text ? toUtf8(text) : std::string();
}

std::string textOfName(const ::String& name) noexcept
{
    std::string bytes = decodedName(bytesOf(name));
    return fromUtf8(bytes) ? bytes : fromDocumentEncoding(bytes);
}

Ref<PDF::String> stringOf(std::string_view text) noexcept
{
    Ref<::String> characters = fromUtf8(text);
    if (!characters)
        return nullptr;
    bool fits = true;
    characters->forEach([&fits](char32_t c) { fits = fits && isLiteral(c); });
    return fits ? PDF::String::create(std::move(characters)) : bigEndian(toUnits(*characters));
}

std::size_t lengthInUnits(std::string_view text) noexcept
{
    std::size_t count = 0;
    for (char32_t c = 0; !text.empty(); count += c > 0xFFFF ? 2 : 1)
        if (!Utf8::read(text, c))
            return 0;
    return count;
}

} // namespace Host
