#pragma once

#include <values/Value.h>

#include <string>

namespace Host {

// Names and keys are written as they are, without any escapes, so that a blank or a solidus in one ends it. The first in
// a value, a stream's dictionary included, that is not read back as it is, for the end of a message: it begins with a
// colon, and control characters are in it as #0A. Empty when all names come back.
std::string unwritableName(const Ref<Libraries::Files::PDF::Value>& value) noexcept;

} // namespace Host
