#pragma once

#include <platform/Reporter.h>

namespace Libraries::Files::PDF {

// The log handle of the document, its parser and its writer. The texts of lines are part of the interface, also
// where they have slips ("Invalid Stirng value", "identifer", "resoure", "the be cloned", "content's has"): those who
// read the log search for them.
inline const Reporter report("PDF");

} // namespace Libraries::Files::PDF
