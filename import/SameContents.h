#pragma once

#include <import/Qpdf.h>

#include <optional>

namespace Import {

// Compares two documents from their trailers on, and what nothing in them refers to in the order of ids. Ids may
// differ; so may what tells how a file is stored, the second half of the trailer's ID, what Extensions of the catalog
// say of a version, and entries with the null value, which are as good as none. The message names the first object of
// the first document that isn't the same in the second; none when all are.
std::optional<std::string> findDifference(QPDF& first, QPDF& second);

} // namespace Import
