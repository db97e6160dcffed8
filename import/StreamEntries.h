#pragma once

#include <import/ValueText.h>

namespace Import {

// Adapts the entries of a stream's dictionary to data that is decrypted: a Crypt filter goes with its parameters. An
// array of one filter without parameters becomes that filter's name, which is all that the core decodes. Arrays that
// are too long to be of filters stay as they are.
void simplifyFilters(ValueText::Entries& entries);

// Whether it is an array that may be of filters, or of their parameters: many streams may share one, so that a long one
// must not be walked through for each.
bool isFilterArray(QPDFObjectHandle value);

} // namespace Import
