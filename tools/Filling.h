#pragma once

#include <host/fields/Fill.h>
#include <tools/CommandLine.h>

namespace Tools {

// The options of the programs that fill forms.
OptionGroup fillOptions();
// What they say; the reason why it can't be done otherwise.
Host::Result<Host::FillOptions> fillOptionsOf(const CommandLine& line);

} // namespace Tools
