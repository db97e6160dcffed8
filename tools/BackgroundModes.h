#pragma once

#include <host/pages/Background.h>

#include <optional>
#include <string>

namespace Tools {

// The mode of a name that people give; none for any other name.
std::optional<Host::PDF::BackgroundMode> modeNamed(const std::string& name);

} // namespace Tools
