#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

// How much there may be, so that time and memory are bounded by a file's size whatever its bytes are. All limits
// that are this library's own; SECURITY.md tells what comes when one is reached.
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

// Levels of form fields, a field at the top being at level 1: building and releasing a tree recurses.
constexpr std::size_t maxFieldLevels = 500;

// The fields of a form. A child that several fields list is built for each of them, so a small file could ask for
// any number; one that lists no child twice has at most a field for each object.
constexpr std::uint64_t maxFields(std::uint64_t objectCount)
{
    return 10000 + 16 * objectCount;
}

} // namespace Limits
