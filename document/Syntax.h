#pragma once

#include <platform/Windows_1252.h>

#include <string_view>

// What the reader and the writer of the file format agree on.
namespace Libraries::Files::PDF::Syntax {

constexpr char32_t backspace = 8;
constexpr char32_t tab = 9;
constexpr char32_t lineFeed = 10;
constexpr char32_t formFeed = 12;
constexpr char32_t carriageReturn = 13;

constexpr const char* headerStart = "%PDF-";
constexpr std::u32string_view objectKeyword = U"obj";
constexpr const char* objectEnd = "endobj";
constexpr const char* streamKeyword = "stream";
constexpr const char* streamEnd = "endstream";
constexpr const char* xrefKeyword = "xref";
constexpr const char* trailerKeyword = "trailer";
constexpr const char* startXrefKeyword = "startxref";
constexpr const char* endMarker = "%%EOF";

// White space is every character below 33, not only the six that the standard names.
constexpr bool isSpace(std::uint32_t c)
{
    return c < 33;
}

// Of which these are what the standard names.
constexpr bool isStandardSpace(std::uint32_t c)
{
    constexpr std::uint64_t six = 1ull << 0 | 1ull << 9 | 1ull << 10 | 1ull << 12 | 1ull << 13 | 1ull << 32;
    return c < 33 && (six >> c & 1) != 0;
}

constexpr bool isLineEnd(std::uint32_t c)
{
    return c == lineFeed || c == carriageReturn;
}

// Numbers that have a fixed width in references and in the cross-reference table.
constexpr std::uint32_t maxGeneration = 65535;
constexpr std::size_t offsetDigits = 10;
constexpr std::size_t generationDigits = 5;

// The string characters of the bytes 128 to 159: those of Windows-1252, and deliberately 0 at the five
// that it leaves undefined. All others stand for themselves.
constexpr std::uint32_t firstMappedByte = 128;
inline constexpr auto& mappedCharacters = Libraries::Strings::Encodings::ANSI::upperControls;

constexpr bool isMapped(std::uint32_t byte)
{
    return byte >= firstMappedByte && byte < firstMappedByte + mappedCharacters.size();
}

constexpr std::uint32_t characterOfByte(std::uint32_t byte)
{
    return isMapped(byte) ? mappedCharacters[byte - firstMappedByte] : byte;
}

} // namespace Libraries::Files::PDF::Syntax
