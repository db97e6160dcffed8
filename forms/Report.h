#pragma once

#include <platform/Reporter.h>

namespace Libraries::Files::PDF {

// The log handle of the forms.
inline const Reporter formReport("Lib.File.PDF.Form");

} // namespace Libraries::Files::PDF
