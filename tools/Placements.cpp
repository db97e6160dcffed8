#include <tools/Placements.h>

#include <charconv>

namespace Tools {

namespace {

using Host::PDF::BackgroundMode;

constexpr Option options[] = {
    {"--mode", "MODE",
        "which page of FOREIGN goes with which: its first with all (all, as without --mode) or the first (first), or "
        "each with its own (pairs), then the last (repeat-last) or all again (repeat-all)"},
    {"--pages", "RANGES", "draw on these pages only: 1-3,7 or odd, even, last, r2"},
    {"--from", "RANGES", "take only these pages of FOREIGN"},
    {"--above", "", "draw above what is there, as files-pdf-stamp does"},
};
constexpr Option fittingOptions[] = {
    {"--box", "BOX",
        "what of each page counts: media, crop, bleed, trim (as without --box) or art; with a comma, another one for "
        "FOREIGN: media,trim"},
    {"--fit", "FIT",
        "none: keep the size; shrink, as without --fit: make smaller what is too large; scale: as large as there is room"},
    {"--at", "PLACE",
        "center, as without --at; lower-left, lower-right, upper-left, upper-right, left, right, bottom or top"},
    {"--offset", "X,Y", "from that place, in points, to the right and up"},
    {"--rotate", "DEGREES", "turn FOREIGN clockwise by a multiple of 90"},
    {"--with-annotations", "", "take links and form fields of FOREIGN along"},
};
constexpr Option mergingOptions[] = {
    {"--merged", "", "merge contents and resources as they are, whatever their size; only --mode goes with it"},
    {"--force", "", "with --merged, go on where the preflight finds a reason not to"},
};

// What an argument of a fixed set of words says.
template <class Value>
struct Word {
    const char* word;
    Value value;
};

template <class Value, std::size_t count>
std::optional<Host::Refusal> setWord(
    const Word<Value> (&words)[count], std::string_view option, const std::string& argument, Value& value)
{
    std::string known;
    for (const Word<Value>& each : words) {
        if (argument == each.word) {
            value = each.value;
            return {};
        }
        known += (known.empty() ? "" : ", ") + std::string(each.word);
    }
    return Host::Refusal{
        Host::Reason::WrongArgument, "unknown " + std::string(option) + " " + argument + ": there are " + known};
}

constexpr Word<Host::Pairing> modes[] = {{"first", Host::Pairing::FirstPageOnly}, {"all", Host::Pairing::AllPages},
    {"pairs", Host::Pairing::PagePairs}, {"repeat-last", Host::Pairing::PagePairsRepeatLast},
    {"repeat-all", Host::Pairing::PagePairsRepeatAll}};
constexpr Word<Host::PageBox> boxes[] = {{"media", Host::PageBox::Media}, {"crop", Host::PageBox::Crop},
    {"bleed", Host::PageBox::Bleed}, {"trim", Host::PageBox::Trim}, {"art", Host::PageBox::Art}};
constexpr Word<Host::Fit> fits[]
    = {{"none", Host::Fit::None}, {"shrink", Host::Fit::Shrink}, {"scale", Host::Fit::Scale}};
constexpr Word<Host::Anchor> anchors[] = {{"center", Host::Anchor::Center}, {"lower-left", Host::Anchor::LowerLeft},
    {"lower-right", Host::Anchor::LowerRight}, {"upper-left", Host::Anchor::UpperLeft},
    {"upper-right", Host::Anchor::UpperRight}, {"left", Host::Anchor::Left}, {"right", Host::Anchor::Right},
    {"bottom", Host::Anchor::Bottom}, {"top", Host::Anchor::Top}};

// A number up to the end of the text or a comma, which is taken, too.
bool takeNumber(std::string_view& text, double& number)
{
    constexpr double farEnough = 1e6;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc() || !(number >= -farEnough && number <= farEnough))
        return false;
    text.remove_prefix(std::size_t(end - text.data()));
    return true;
}

std::optional<Host::Refusal> setOffset(const std::string& argument, Host::Placement& placement)
{
    std::string_view text = argument;
    const bool isRead = takeNumber(text, placement.offsetX) && text.starts_with(',');
    text.remove_prefix(isRead ? 1 : 0);
    if (isRead && takeNumber(text, placement.offsetY) && text.empty())
        return {};
    return Host::Refusal{Host::Reason::WrongArgument, "an offset is two numbers of points, such as 10,-20"};
}

std::optional<Host::Refusal> setRotation(const std::string& argument, int& rotation)
{
    const char* const end = argument.data() + argument.size();
    const auto read = std::from_chars(argument.data(), end, rotation);
    if (read.ec == std::errc() && read.ptr == end && rotation % 90 == 0)
        return {};
    return Host::Refusal{Host::Reason::WrongArgument, "a page can be turned by a multiple of 90 degrees"};
}

std::optional<Host::Refusal> setBoxes(const std::string& argument, Host::Placement& placement)
{
    const std::size_t comma = std::min(argument.find(','), argument.size());
    if (auto refusal = setWord(boxes, "box", argument.substr(0, comma), placement.box))
        return refusal;
    placement.foreignBox = placement.box;
    return comma == argument.size() ? std::nullopt
                                    : setWord(boxes, "box", argument.substr(comma + 1), placement.foreignBox);
}

// `merge` is the document's way, whose modes are all but one.
std::optional<BackgroundMode> mergeModeOf(Host::Pairing pairing)
{
    if (pairing == Host::Pairing::PagePairsRepeatAll)
        return {};
    return BackgroundMode(pairing);
}

} // namespace

std::array<OptionGroup, 3> placementOptions()
{
    return {{{"", options}, {"placing", fittingOptions}, {"merging", mergingOptions}}};
}

const Option* placementOption(std::string_view name)
{
    for (const OptionGroup& group : placementOptions())
        for (const Option& option : group.options)
            if (name == option.name + 2)
                return &option;
    return nullptr;
}

std::optional<Host::Refusal> ask(PagesAsked& asked, std::string_view option, const std::string& argument)
{
    Host::Placement& placement = asked.placement;
    if (option == "mode")
        return setWord(modes, option, argument, placement.pairing);
    if (option == "box")
        return setBoxes(argument, placement);
    if (option == "fit")
        return setWord(fits, option, argument, placement.fit);
    if (option == "at")
        return setWord(anchors, option, argument, placement.anchor);
    if (option == "offset")
        return setOffset(argument, placement);
    if (option == "rotate")
        return setRotation(argument, placement.rotation);
    if (option == "pages")
        placement.pages = argument;
    else if (option == "from")
        placement.from = argument;
    else if (option == "above")
        placement.layer = Host::Layer::Above;
    else if (option == "with-annotations")
        placement.hasAnnotations = true;
    else if (option == "merged")
        asked.isMerged = true;
    else if (option == "force")
        asked.isForced = true;
    return {};
}

Host::Result<Host::PlaceResult> drawPages(const Ref<Host::PDF::Document>& document,
    const Ref<Host::PDF::Document>& foreign, const PagesAsked& asked)
{
    if (!asked.isMerged)
        return Host::place(document, foreign, asked.placement);
    const auto mode = mergeModeOf(asked.placement.pairing);
    if (!mode)
        return Host::Refusal{Host::Reason::WrongArgument, "pages that are merged can't be repeated over and over"};
    auto merged = Host::mergeBackground(document, foreign, *mode, {asked.isForced, asked.placement.limitFactor});
    if (!merged)
        return merged.refusal();
    return Host::PlaceResult{merged->pageCount, std::move(merged->warnings)};
}

} // namespace Tools
