#pragma once

#include <host/fields/FormFields.h>

#include <map>
#include <string>
#include <vector>

namespace Host {

// What goes into the fields of a form, each value under the path of its field. They are set in this order, so that the
// same values always make the same file.
using FieldValues = std::map<std::string, FieldValue>;

// The fields of a form that take a value, in its order; of those with the same path only the first. They belong to
// `form`.
EXPORTED std::vector<const FormField*> fieldsWithValues(const FormFields& form) noexcept;

} // namespace Host
