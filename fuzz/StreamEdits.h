#pragma once

#include "Check.h"
#include "Forecast.h"

#include <tests/support/TestStripe.h>

namespace Fuzz {

// Operations on the streams of a document, each with what it promises about all of them. `file` is what the
// document was opened from.

// Replaces the data of a stream. `data` may fail on demand, and begins behind `start` bytes that don't count.
void replaceData(const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream, const std::string& data,
    std::uint64_t start, bool isCompressing, Tests::Fault fault) noexcept;
enum class Way { Library, Host }; // the second one looks first, and leaves no filter changed
void recompress(const Ref<PDF::Document>& document, std::string_view file, PDF::Compression target, Way way,
    Allowance& allowance) noexcept;
void cacheStreams(const Ref<PDF::Document>& document, std::string_view file, Allowance& allowance) noexcept;

} // namespace Fuzz
