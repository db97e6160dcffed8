#pragma once

#include <platform/String.h>

namespace Libraries::Files::PDF {

// The text of an id and a generation, "12 (0)", by which log lines name objects.
Ref<::String> referenceText(std::uint32_t id, std::uint16_t generation) noexcept;

} // namespace Libraries::Files::PDF
