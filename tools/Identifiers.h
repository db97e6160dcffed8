#pragma once

#include <host/fields/FormFields.h>
#include <host/losses/Losses.h>

namespace Tools {

// What kinds are called for programs, in JSON: unlike the texts for people these never change.
const char* identifierOf(Host::LossKind kind);
const char* identifierOf(Host::FieldKind kind);

} // namespace Tools
