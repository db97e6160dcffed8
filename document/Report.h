#pragma once

#include <platform/Reporter.h>

namespace Libraries::Files::PDF {

// The log handle of the document, its parser and its writer.
inline const Reporter report("PDF");

} // namespace Libraries::Files::PDF
