#pragma once

#include <host/streams/Predictor.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// The filters that turn bytes into other bytes without loss. Each appends to `out` what `in` holds, up to `limit` bytes
// in all, and takes time that grows with what it reads and appends.
namespace Host::Decoders {

using Bytes = std::vector<std::uint8_t>;
using Input = std::span<const std::uint8_t>;

enum class End {
    Whole,   // the data came to its end
    Damaged, // it is wrong or cut at some place; `out` has what came before
    TooLong, // there is more than the limit; `out` has as much as that
};

// Ends at "~>", or without it at the end of the data, which counts as whole. White space is passed over.
End ascii85(Input in, std::size_t limit, Bytes& out);
// Ends at ">", likewise.
End asciiHex(Input in, std::size_t limit, Bytes& out);
// Ends at the length byte 128, likewise.
End runLength(Input in, std::size_t limit, Bytes& out);
// Codes of 9 to 12 bits, which grow one code earlier than they must where `isEarly` says so, as is the default of
// the format. Ends at the code 257, likewise.
End lzw(Input in, bool isEarly, std::size_t limit, Bytes& out);
// zlib's format. What follows its end is passed over.
End flate(Input in, std::size_t limit, Bytes& out);

// Takes back a predictor that is usable. `Damaged` for a PNG row of an unknown type.
End unpredict(const Predictor& predictor, Input in, std::size_t limit, Bytes& out);

} // namespace Host::Decoders
