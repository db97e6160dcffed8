#pragma once

#include <host/fields/Fill.h>

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <utility>
#include <vector>

namespace Tools {

// What goes into fields, each under its path, in the order in which it is set.
using FieldValues = std::vector<std::pair<std::string, Host::FieldValue>>;

// Values from JSON: an object from a name to a text, true, false, or a list of texts.
Host::Result<FieldValues> valuesOf(const nlohmann::json& object);
// The same from a file. Whatever is wrong with it makes it unusable.
Host::Result<FieldValues> readValues(const std::string& path);

} // namespace Tools
