#pragma once

#include <cstddef>
#include <cstdint>

// All limits of the host library, which keep time and memory in proportion to a file, whatever is in it. Sizes of
// buffers, and what the format itself limits, are where they are used. SECURITY.md lists those that users meet.
namespace Host::Limits {

// Bytes read of a file under examination, once for its tables and once for its objects. What lies inside each other
// or leads to the same place is read again for each, which nothing but a file made for it does more than a few
// times.
constexpr std::uint64_t maxReadings = 16; // of the whole file
constexpr bool isReadTooOften(std::uint64_t bytesRead, std::uint64_t fileSize) noexcept
{
    return bytesRead / maxReadings > fileSize;
}
// Bytes by which a file counts as larger for its objects: of a small one more is read at a time than there is.
constexpr std::uint64_t readingAllowance = 1 << 16;

// Digits of a whole number in a file that is examined: as many as 64 bits hold in any case.
constexpr int maxDigits = 18;

// What a loss shows of the file, in bytes, since each object may have one: of a value, and of data.
constexpr std::size_t maxLossText = 200;
constexpr std::size_t maxDataExcerpt = 40;

// Levels of a form's fields. The walk over them is recursive; no deeper than values may nest.
constexpr std::size_t maxFieldDepth = 500;
// The path of a field, in bytes: each field below repeats it.
constexpr std::size_t maxFieldPath = 4096;
// Messages about parts of a form that were skipped. Each part could have one.
constexpr std::size_t maxSkipped = 100;
// The texts of one listing of fields, in bytes: fields may share long texts, and each gives them in full.
constexpr std::size_t maxListedText = std::size_t(16) << 20;

// References that lead from one to the next. Objects that hold nothing but a reference hardly occur, and a longer
// chain counts as leading nowhere.
constexpr int maxReferenceChain = 16;

// Symbolic links that are followed to a target: as many as the system follows.
constexpr int maxLinks = 40;
// Random names that are tried for a new file. A second one is hardly ever needed.
constexpr int maxNameAttempts = 16;

} // namespace Host::Limits
