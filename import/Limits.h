#pragma once

#include <cstddef>
#include <cstdint>

// All limits of the door. libqpdf has none of its own. SECURITY.md lists those that users meet.
namespace Import::Limits {

// What the decoded object streams together, and the image, may each take, where no option says otherwise: so many times
// the file, and never less than so many bytes.
constexpr std::uint64_t maxGrowth = 16;
constexpr std::uint64_t growthAllowance = std::uint64_t(256) << 20;
// Bytes of the image's text that are kept in memory; more of them in a file.
constexpr std::size_t maxTextInMemory = std::size_t(64) << 20;

// What libqpdf may read of the file: so many times its size, and so many bytes. Of a sound file it reads two or three
// times the size, and a few blocks for each object; rows of a table that all lead to the same bytes have no end.
constexpr std::uint64_t maxReadings = 32;
constexpr std::uint64_t readingAllowance = 1 << 20;

// Rows of the image's table for ids that the file doesn't use, in bytes: so many times the file, and never less than so
// many.
constexpr std::uint64_t maxGaps = 16;
constexpr std::uint64_t gapAllowance = 1 << 20;

// Rows that the cross-reference streams of a file may say they have: so many for each of its bytes, and never less than
// so many. libqpdf takes some hundred bytes for each, and data of a few bytes has thousands.
constexpr std::uint64_t maxRows = 1;
constexpr std::uint64_t rowAllowance = 1 << 16;

// Object streams: their dictionaries, in bytes; their filters; the rows of their predictors, in bits, for which libqpdf
// takes memory however little data there is; and bytes that are read again since objects overlap, in times the data.
constexpr std::size_t maxStreamDictionary = 1 << 16;
constexpr int maxStreamFilters = 2;
constexpr std::uint64_t maxPredictorRow = 1 << 20;
constexpr std::uint64_t maxOverlaps = 16;

// Warnings of libqpdf that are kept, and places of a kind that are named. There may be one for each value.
constexpr std::size_t maxWarnings = 100;
constexpr std::size_t maxPlaces = 100;

} // namespace Import::Limits
