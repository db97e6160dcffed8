#pragma once

#include <platform/String.h>

namespace Libraries::Files::PDF {

// The number of a PDF version from the texts on either side of its point: 1 to 8 for 1.0 to 1.7, 13 for
// 2.0; 9 to 12 deliberately stay unused. 0, with a line, for any other text.
EXPORTED std::uint32_t versionFromStrings(const Ref<::String>& major, const Ref<::String>& minor) noexcept;

// The text of a version number, as "PDF-1.7". Null, with a line of level 3 and no code, for a number of no
// version.
EXPORTED Ref<::String> versionToString(std::uint32_t version) noexcept;

} // namespace Libraries::Files::PDF
