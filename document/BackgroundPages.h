#pragma once

#include <document/Document.h>

#include <algorithm>

// Which pages `addBackground` brings together. Pages of this document are those from the first on, without gaps.
namespace Libraries::Files::PDF {

// How many pages of a foreign document that has `pageCount` are looked at.
constexpr std::size_t foreignPagesRead(BackgroundMode mode, std::size_t pageCount)
{
    const bool isFirstOnly = mode == BackgroundMode::FirstPageOnly || mode == BackgroundMode::AllPages;
    return isFirstOnly ? std::min<std::size_t>(pageCount, 1) : pageCount;
}

// How many pages of a document that has `pageCount` get a background of so many foreign pages read. Deliberate:
// an unknown mode gives none of them one, and is no failure.
constexpr std::size_t pagesWithBackground(BackgroundMode mode, std::size_t pageCount, std::size_t foreignCount)
{
    switch (mode) {
    case BackgroundMode::FirstPageOnly:
    case BackgroundMode::PagePairs:
        return std::min(pageCount, foreignCount);
    case BackgroundMode::AllPages:
    case BackgroundMode::PagePairsRepeatLast:
        return pageCount;
    }
    return 0;
}

// Which of the foreign pages read goes beneath the page at `index`.
constexpr std::size_t foreignPageBeneath(std::size_t index, std::size_t foreignCount)
{
    return std::min(index, foreignCount - 1);
}

// The code that tells of a foreign document what `code` tells of this one: those for what is wrong with a document's
// structure move, all others stay.
constexpr std::uint32_t foreignCode(std::uint32_t code)
{
    constexpr std::uint32_t firstStructureCode = 0x600;
    constexpr std::uint32_t lastStructureCode = 0x6FF;
    constexpr std::uint32_t distance = 0x100;
    return code >= firstStructureCode && code <= lastStructureCode ? code + distance : code;
}

} // namespace Libraries::Files::PDF
