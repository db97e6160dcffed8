#pragma once

#include <host/base/Result.h>
#include <host/files/FileStripe.h>

#include <optional>

namespace Tools {

// A message of what saving loses of the file, or why that can't be told; none when it loses nothing.
std::optional<Host::Refusal> lossesOf(const Ref<Host::FileStripe>& file);

} // namespace Tools
