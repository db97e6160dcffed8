#pragma once

#include <host/files/FileStripe.h>
#include <import/Options.h>
#include <import/Report.h>

namespace Import {

// The image of a file, and in the report what was done for it. libqpdf has let go of everything when it returns. Throws
// `Stop`, and whatever libqpdf throws.
Ref<Interfaces::Stripe> convert(const Ref<Host::FileStripe>& file, const Options& options, Report& report);

} // namespace Import
