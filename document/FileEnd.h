#pragma once

#include <document/Syntax.h>

#include <cstring>

// How the end of a file is found, from its last character backwards. It serves all sources of characters that say
//
//     bool at(std::uint64_t position, std::uint32_t& c);                   // false where it can't be read
//     bool hasKeywordEndingAt(std::uint64_t last, const char* keyword);
namespace Libraries::Files::PDF::FileEnd {

// Walks backwards from `position` to the first character that isn't passed, or to the beginning. False where one
// can't be read.
template <class Source, class IsPassed>
bool walkBack(Source& source, std::uint64_t& position, IsPassed isPassed)
{
    std::uint32_t c = Syntax::lineFeed;
    while (position > 0 && isPassed(c))
        if (!source.at(--position, c))
            return false;
    return true;
}

// The position of the end marker in a source of `size` characters, 0 when it is not there. Only line ends may
// follow it.
template <class Source>
std::uint64_t findEndMarker(Source& source, std::uint64_t size)
{
    const std::size_t length = std::strlen(Syntax::endMarker);
    std::uint64_t position = size;
    if (position < length || !walkBack(source, position, Syntax::isLineEnd))
        return 0;
    return source.hasKeywordEndingAt(position, Syntax::endMarker) ? position + 1 - length : 0;
}

// The position after the keyword "startxref", 0 when it is not there. Between it and the end marker are line ends
// and digits, and nothing else.
template <class Source>
std::uint64_t findStartXref(Source& source, std::uint64_t endMarker)
{
    const auto isPassed = [](std::uint32_t c) { return Syntax::isLineEnd(c) || (c >= '0' && c <= '9'); };
    std::uint64_t position = endMarker;
    if (position < std::strlen(Syntax::startXrefKeyword) || !walkBack(source, position, isPassed))
        return 0;
    return source.hasKeywordEndingAt(position, Syntax::startXrefKeyword) ? position + 1 : 0;
}

} // namespace Libraries::Files::PDF::FileEnd
