#pragma once

#include <host/pages/Edit.h>

namespace Host {

// Enters the groups of optional content among the objects that were copied into the catalog of the document, with the
// state that they have in `source`: what is hidden there stays hidden, and what its viewers decide stays theirs.
void addOptionalContent(Edit& edit, const PDF::Document& source, PDF::ValueCopying& copying) noexcept;

} // namespace Host
