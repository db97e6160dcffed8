#pragma once

#include <cstdint>

namespace Host {

// Whether something is drawn before the content of a page or after it.
enum class Layer : std::uint8_t { Beneath, Above };

} // namespace Host
