#pragma once

#include "SeedFiles.h"

namespace Fuzz {

// Files that the core doesn't open: with object streams and cross-reference streams, several tables, encryption.
SeedFiles importFiles();

} // namespace Fuzz
