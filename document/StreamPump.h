#pragma once

#include <platform/BlockFilter.h>
#include <platform/Stripe.h>

namespace Libraries::Files::PDF {

// Where a pump stopped. The callers tell it in their own words, which begin with `pumpFailure`.
enum class PumpEnd { Done, Read, Convert, Write, Flush, WriteFlushed };

// The beginning of the line for a pump that stopped.
const char* pumpFailure(PumpEnd end) noexcept;

// Moves `amount` bytes from `source` through the filter to `target`, both of 1-byte elements and at
// their present places, in blocks of up to 65,536 bytes, and flushes the filter. Input that the filter
// leaves over is dropped.
PumpEnd pump(Interfaces::Stream& source, std::uint64_t amount, BlockFilter& filter, Interfaces::Stream& target) noexcept;

} // namespace Libraries::Files::PDF
