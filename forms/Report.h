#pragma once

#include <platform/Reporter.h>

namespace Libraries::Files::PDF {

// The log handle of the forms. The texts of lines are part of the interface, slips included.
inline const Reporter formReport("Lib.File.PDF.Form");

} // namespace Libraries::Files::PDF
