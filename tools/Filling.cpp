#include <tools/Filling.h>

namespace Tools {

namespace {

constexpr Option options[] = {
    {"--viewer-looks", "", "ask viewers to draw the new values, instead of drawing them"},
    {"--keep-looks", "", "neither draw the new values nor ask viewers to"},
    {"--any-text", "", "fill in a text with characters that no font has, too, and leave them out where it is drawn"},
};

} // namespace

OptionGroup fillOptions()
{
    return {"drawing", options};
}

Host::Result<Host::FillOptions> fillOptionsOf(const CommandLine& line)
{
    Host::FillOptions result;
    if (std::string conflict = line.conflictAmong({"--viewer-looks", "--keep-looks"}); !conflict.empty())
        return Host::Refusal{Host::Reason::WrongArgument, std::move(conflict)};
    if (line.has("--viewer-looks"))
        result.appearances = Host::Appearances::DrawnByViewers;
    if (line.has("--keep-looks"))
        result.appearances = Host::Appearances::LeftAsTheyAre;
    result.isAnyTextAllowed = line.has("--any-text");
    return result;
}

} // namespace Tools
