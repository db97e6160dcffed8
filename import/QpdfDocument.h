#pragma once

#include <import/Options.h>
#include <import/Source.h>

namespace Import {

// A file as libqpdf opens it, which prints nothing. Throws `Stop` when none of its passwords was given and, without
// repair, when libqpdf warned of something before it gave up.
std::shared_ptr<QPDF> openQpdf(const std::shared_ptr<Source>& source, const Options& options);

} // namespace Import
