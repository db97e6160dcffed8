#pragma once

#include <host/base/Result.h>

#include <nlohmann/json.hpp>

#include <string_view>

namespace Tools {

// Which numbers of a JSON text are read as texts of their digits, so that 1.10 keeps its zero.
enum class Digits { All, UnderFill };

// Reads a JSON text whose outermost value is an object. Refused, with line and column: what is no JSON in UTF-8, a key
// that is twice in one object, and values nested deeper than any that a program takes.
Host::Result<nlohmann::json> readJson(std::string_view text, Digits digits);

} // namespace Tools
