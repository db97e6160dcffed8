#pragma once

#include <host/pages/Background.h>

#include <map>
#include <optional>
#include <string>

namespace Tools {

// The mode of a name that people give; none for any other name.
inline std::optional<Host::PDF::BackgroundMode> modeNamed(const std::string& name)
{
    using Host::PDF::BackgroundMode;
    static const std::map<std::string, BackgroundMode> modes = {
        {"first", BackgroundMode::FirstPageOnly},
        {"all", BackgroundMode::AllPages},
        {"pairs", BackgroundMode::PagePairs},
        {"repeat-last", BackgroundMode::PagePairsRepeatLast},
    };
    const auto found = modes.find(name);
    return found == modes.end() ? std::nullopt : std::optional(found->second);
}

} // namespace Tools
