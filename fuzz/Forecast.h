#pragma once

#include "Values.h"

#include <optional>
#include <string>
#include <string_view>

// What operations would need, worked out from the document and the file without asking for them.
namespace Fuzz {

// Zlib data taken apart without the library's filters.
struct Inflated {
    enum class End { Whole, Damaged, TooLong };
    End end;
    std::string bytes; // as far as it went
};
// Up to `most` bytes of what the data holds; what follows the data is left out.
Inflated inflated(std::string_view data, std::uint64_t most) noexcept;

// The data of a stream as it stands in the file; none when its place or `Length` is no good.
std::optional<std::string_view> storedIn(
    std::string_view file, const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream) noexcept;
// The elements that a save takes, data that streams hold included.
std::uint64_t elementsToWrite(const Ref<PDF::Document>& document, std::string_view file) noexcept;
// Whether the stream's `Filter` is the name FlateDecode.
bool isFlate(const Ref<PDF::StreamObj>& stream) noexcept;

// The most that `addBackground` makes.
struct BackgroundCost {
    std::uint64_t clones = 0;   // of values, what pages get in common counted for each of them
    std::uint64_t elements = 0; // of stream data
};
BackgroundCost costOfBackground(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign,
    std::string_view foreignFile) noexcept;

} // namespace Fuzz
