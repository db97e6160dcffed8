#pragma once

#include <import/ValueText.h>

namespace Import {

// Adapts the entries of a stream's dictionary to data that is decrypted: a Crypt filter goes with its parameters. An
// array of one filter without parameters becomes that filter's name, which is all that the core decodes.
void simplifyFilters(ValueText::Entries& entries);

} // namespace Import
