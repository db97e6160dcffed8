#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

// How much there may be, so that time and memory are bounded by a file's size whatever its bytes are. All limits
// that are this project's own, those of the core first and those of the host library after them; SECURITY.md tells
// what happens when one is reached. Sizes of buffers, and what the format itself limits, are where they are used.
namespace Limits {

// Arrays and dictionaries inside each other: every walk over values recurses, the release included, and needs no
// more than 1 MB of stack at this depth.
constexpr unsigned maxNesting = 500;

// All objects of a file together may take this many times the elements of the file. Only objects inside objects
// exceed it: without the limit, n of them, each inside the one before, would take time in the square of n.
constexpr std::uint64_t maxReadings = 16;
constexpr bool isReadTooOften(std::uint64_t elementsTaken, std::uint64_t fileSize)
{
    return elementsTaken / maxReadings > fileSize;
}

// One object, or the trailer, may take this many times the elements that the stripe says it has: what is given
// back is read twice at most. It stops a stripe that goes on after its end.
constexpr std::uint64_t maxPasses = 3;
constexpr std::uint64_t maxElementsAtOnce(std::uint64_t fileSize)
{
    return maxPasses * fileSize;
}

// After each so many characters a line is compared with the size of its stripe, which it can't be longer than.
constexpr std::size_t lineStep = 65536;

// The stored data of one stream that is cached, copied or written, in elements: 32 bits count it.
constexpr std::uint64_t maxStreamSize = std::numeric_limits<std::uint32_t>::max();

// The free rows of a table that is written for ids with gaps, 20 bytes each: as many times the source's bytes,
// and as many bytes in any case. A file of one object may have the highest id there is.
constexpr std::uint64_t maxFreeRows(std::uint64_t fileSize)
{
    constexpr std::uint64_t rowSize = 20;
    constexpr std::uint64_t alwaysAllowed = 1 << 20;
    return (fileSize < alwaysAllowed / maxReadings ? alwaysAllowed : maxReadings * fileSize) / rowSize;
}

// Levels of form fields, a field at the top being at level 1: building and releasing a tree recurses.
constexpr std::size_t maxFieldLevels = 500;

// The fields of a form. A child that several fields list is built for each of them, so a small file could ask for
// any number; one that lists no child twice has at most a field for each object.
constexpr std::uint64_t maxFields(std::uint64_t objectCount)
{
    return 10000 + 16 * objectCount;
}

// An examination reads a file within `maxReadings`, once for its tables and once for its objects. For the objects it
// counts as this many bytes larger: of a small file more is read at a time than there is.
constexpr std::uint64_t readingAllowance = 1 << 16;

// Digits of a whole number in a file that is examined: as many as 64 bits hold in any case.
constexpr int maxDigits = 18;

// The source of an array or a dictionary that is kept since it was read otherwise than the format means, in bytes, and
// the notes of what one has in it: beyond these it counts as lost.
constexpr std::uint64_t maxKeptSource = std::uint64_t(1) << 20;
constexpr std::size_t maxPendingNotes = 1 << 16;

// What a loss shows of the file, in bytes, since each object may have one: of a value, and of data.
constexpr std::size_t maxLossText = 200;
constexpr std::size_t maxDataExcerpt = 40;

// The path of a field, in bytes: each field below repeats it.
constexpr std::size_t maxFieldPath = 4096;
// Messages about parts of a form that were skipped. Each part could have one.
constexpr std::size_t maxSkipped = 100;
// What one operation of the host library may spend on a document (host/base/Budget.h): so much in any case, and so much
// for each byte of the document, which is its file and the data that it holds. A file may refer to one thing from many
// places, and streams may overlap, so each place alone says little.
struct Allowance {
    std::uint64_t always;
    std::uint64_t perByte;

    constexpr std::uint64_t of(std::uint64_t documentSize) const noexcept
    {
        constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
        return documentSize > (most - always) / perByte ? most : always + perByte * documentSize;
    }
};
// Bytes of texts that are given out or kept meanwhile, and of what holds them.
constexpr Allowance texts{std::uint64_t(64) << 20, 16};
// Bytes of stored stream data that are read from the file. Only streams that overlap have more than the file.
constexpr Allowance storedData{std::uint64_t(16) << 20, 16};
// Bytes of stream data after each of its filters. Flate makes a byte 1032 and LZW up to 2730; several of them in a row
// could fill any memory.
constexpr Allowance decodedData{std::uint64_t(128) << 20, 64};
// Values that are copied. A page takes some hundred bytes, and what goes beneath it some hundred values.
constexpr Allowance copies{std::uint64_t(1) << 20, 4};
// Elements, names and values that are visited. A list may be that of many owners, and each walks it.
constexpr Allowance steps{std::uint64_t(2) << 20, 2};

// A file of values that is read into memory as a whole, in bytes, and a row of one that isn't.
constexpr std::size_t maxValuesFile = std::size_t(16) << 20;
// What the names and texts of such a file come to, in bytes of memory: each field repeats the names above it, and an
// object may be the value of many fields.
constexpr std::size_t maxValueTexts(std::size_t fileSize)
{
    return (std::size_t(1) << 20) + 16 * fileSize;
}

// References that lead from one to the next. Objects that hold nothing but a reference hardly occur, and a longer
// chain counts as leading nowhere.
constexpr int maxReferenceChain = 16;

// The filters of one stream. More than two or three hardly occur.
constexpr std::size_t maxFilters = 16;

// The parts of the contents of all pages together that something is drawn on. Only pages that share a long list of
// them have more than a few bytes of the file for each.
constexpr std::size_t maxContentParts(std::size_t fileSize)
{
    return 10000 + 4 * fileSize;
}
// Annotations that come along with the pages that are drawn, of a page many, on many pages; and widgets that become a
// part of a page once more.
constexpr std::size_t maxAnnotationCopies(std::size_t objectCount)
{
    return 10000 + 16 * objectCount;
}

// What is read of a font, decoded, in bytes: of the map of its characters, and of its program. The largest fonts that
// there are, with all ideographs, have a program of 30 MiB.
constexpr std::size_t maxCodeMap = std::size_t(4) << 20;
constexpr std::size_t maxFontProgram = std::size_t(64) << 20;

// The size of text that a field asks for, in points; any other means the size that fits.
constexpr double minTextSize = 0.1, maxTextSize = 2000;
// The width and height of a field, in points. A page may be 14400 of them wide.
constexpr double maxFieldExtent = 1e6;
// The cells of a comb, and the choices of a list box that are drawn.
constexpr std::int64_t maxCells = 10000;

// Symbolic links that are followed to a target: as many as the system follows.
constexpr int maxLinks = 40;
// Random names that are tried for a new file. A second one is hardly ever needed.
constexpr int maxNameAttempts = 16;

} // namespace Limits
