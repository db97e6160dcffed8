#pragma once


#include <platform/Export.h>

#include <array>
#include <cstdint>

namespace Host {

// Between the bytes of a file and the elements that stand for them, their Windows-1252 code points.
EXPORTED extern const std::array<std::uint32_t, 256> elementOfByte;

// The byte that `element` stands for; -1 when it stands for none.
int byteOfElement(std::uint32_t element) noexcept;

} // namespace Host
