#include <tools/BackgroundModes.h>

namespace Tools {

using Host::PDF::BackgroundMode;

std::optional<BackgroundMode> modeNamed(const std::string& name)
{
    constexpr struct {
        const char* name;
        BackgroundMode mode;
    } modes[] = {
        {"first", BackgroundMode::FirstPageOnly},
        {"all", BackgroundMode::AllPages},
        {"pairs", BackgroundMode::PagePairs},
        {"repeat-last", BackgroundMode::PagePairsRepeatLast},
    };
    for (const auto& each : modes)
        if (name == each.name)
            return each.mode;
    return {};
}

} // namespace Tools
