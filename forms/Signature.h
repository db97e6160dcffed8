#pragma once

#include <forms/Field.h>

namespace Libraries::Files::PDF::Fields {

// A signature field, so that a form with one can be walked. The signature is neither read nor checked.
// It is written as it is, and does not hold in a file that was written anew.
class EXPORTED Signature : public virtual Field {};

} // namespace Libraries::Files::PDF::Fields
