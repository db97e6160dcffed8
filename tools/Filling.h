#pragma once

#include <host/fields/Fill.h>
#include <host/fields/Flatten.h>
#include <tools/CommandLine.h>

namespace Tools {

// The options of the programs that fill forms.
OptionGroup fillOptions();
// What they say; the reason why it can't be done otherwise.
Host::Result<Host::FillOptions> fillOptionsOf(const CommandLine& line);

// Those of them that go for all texts that are drawn.
OptionGroup textOptions();
// How the fields that they don't fill are drawn and flattened.
Host::FlattenOptions flattenOptionsOf(const CommandLine& line);

// Adds those that aren't there yet.
void addWarnings(std::vector<std::string>& warnings, const std::vector<std::string>& more);

} // namespace Tools
