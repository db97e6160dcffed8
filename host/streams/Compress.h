#pragma once

#include <cstdint>
#include <vector>

namespace Host {

// The bytes as FlateDecode stores them.
std::vector<std::uint8_t> compressedBytes(const std::vector<std::uint8_t>& bytes) noexcept;

} // namespace Host
