#pragma once

#include <platform/BlockFilter.h>
#include <platform/Stripe.h>

namespace Libraries::Files::PDF {

// Where a pump stopped.
enum class PumpEnd { Done, Read, Convert, Write, WriteUnfiltered, Flush, WriteFlushed };

struct PumpResult {
    PumpEnd end = PumpEnd::Done;
    // Of a read that came short: what it delivered, what it was asked for, and the code it left.
    std::uint64_t got = 0;
    std::uint64_t asked = 0;
    std::uint32_t code = 0;
};

// The beginning of the line for a pump that stopped, which goes on with the name of the stream.
const char* pumpFailure(PumpEnd end) noexcept;

// Moves `amount` bytes from `source` to `target`, both of 1-byte elements and at their present positions, in
// blocks of up to 65,536 bytes, through the filter if there is one, which is flushed at the end. Input
// that the filter leaves over is dropped.
PumpResult pump(
    Interfaces::Stream& source, std::uint64_t amount, BlockFilter* filter, Interfaces::Stream& target) noexcept;

} // namespace Libraries::Files::PDF
