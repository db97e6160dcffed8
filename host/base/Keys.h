#pragma once

#include <values/Dictionary.h>

#include <vector>

namespace Host {

// The keys of a dictionary in their order. An application's own dictionary may have no list of them, which is an empty
// one here, and null among them, which are left out.
std::vector<Ref<::String>> keysOf(const Libraries::Files::PDF::Dictionary& dictionary) noexcept;

} // namespace Host
