#pragma once

#include <host/pages/Background.h>
#include <host/pages/Place.h>
#include <tools/Program.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace Tools {

// How the pages of one file go onto those of another, as people ask for it.
struct PagesAsked {
    Host::Placement placement;
    // Merged by `Document::addBackground`, which knows the mode alone.
    bool isMerged = false;
    bool isForced = false; // where that finds a reason not to
};

// The options of programs that draw pages.
std::array<OptionGroup, 3> placementOptions();
// The one of this name, without its dashes, which a batch has as a key; null for none.
const Option* placementOption(std::string_view name);

// Sets what an option of these says; the argument is empty for one that takes none. The reason when it can't be.
std::optional<Host::Refusal> ask(PagesAsked& asked, std::string_view option, const std::string& argument);

// Draws or merges the pages. `pageCount` and `warnings` are those of either.
Host::Result<Host::PlaceResult> drawPages(const Ref<Host::PDF::Document>& document,
    const Ref<Host::PDF::Document>& foreign, const PagesAsked& asked);

} // namespace Tools
