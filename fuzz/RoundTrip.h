#pragma once

#include "Check.h"
#include "Forecast.h"

namespace Fuzz {

// Opens a file in memory; null when it is refused, with one of the codes that opening has.
Ref<PDF::Document> openFile(std::string_view file) noexcept;

// Why a file that is written from the document may come back otherwise, or not at all; null when it must come
// back as it is. `first` is the first number of its table.
const char* reasonForLoss(const Ref<PDF::Document>& document, std::uint32_t first) noexcept;

// Writes the document, opens what was written, and writes that: the two files must be the same. A document
// is written unless the data of a stream can't be had. `file` is what it was opened from. An exact file must give
// back every value in its exact form besides, and is written unless the ids leave too large gaps.
void checkRoundTrip(Ref<PDF::Document> document, std::string_view file, Allowance& allowance) noexcept;

// The same for a document that is as it was opened. The size that an examination of the file foretells must be that of
// the exact file.
void checkExamined(Ref<PDF::Document> document, std::string_view file, Allowance& allowance) noexcept;

} // namespace Fuzz
