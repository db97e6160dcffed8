#pragma once

#include <string>

namespace Fuzz {

// A file with object streams and a cross-reference stream, all of them uncompressed, that fits what is in it: after a
// change the lists of its object streams, their lengths and the rows of its table are brought up to date. In an object
// stream each value is preceded by a comment that is its id. As it is when it has no cross-reference stream of that kind.
std::string repacked(std::string file);

} // namespace Fuzz
