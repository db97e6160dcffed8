#pragma once

#include <map>
#include <string>

namespace Fuzz {

// PDF files by name, the same at each call.
using SeedFiles = std::map<std::string, std::string>;

// Small files, each with some of what a file may hold: kinds of values and of streams, line endings, pages, forms,
// and what the reading loses.
SeedFiles smallFiles();
// Values as deep as they may be, and chains of references as long as a file of some size has them.
SeedFiles deepFiles();
// Files of up to 1 MB that take much memory: long values, objects and streams that lie in each other, data that
// decodes to a thousand times its size.
SeedFiles longFiles();
// A file whose pages can be put beneath those of the others.
std::string letterhead();

} // namespace Fuzz
