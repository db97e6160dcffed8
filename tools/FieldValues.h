#pragma once

#include <host/fields/Fill.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace Tools {

// What goes into fields, each under its path, in the order in which it is set.
using FieldValues = std::vector<std::pair<std::string, Host::FieldValue>>;

// Values from JSON: an object from a name to a text, true, false, or a list of texts.
inline Host::Result<FieldValues> valuesOf(const nlohmann::json& object)
{
    if (!object.is_object())
        return Host::Refusal{"is no JSON object"};
    const auto isText = [](const nlohmann::json& element) { return element.is_string(); };
    FieldValues values;
    for (const auto& [name, element] : object.items())
        if (element.is_boolean())
            values.emplace_back(name, element.get<bool>());
        else if (element.is_string())
            values.emplace_back(name, element.get<std::string>());
        else if (element.is_array() && std::all_of(element.begin(), element.end(), isText))
            values.emplace_back(name, element.get<std::vector<std::string>>());
        else
            return Host::Refusal{"the value of " + name + " is no text, true, false or list of texts"};
    return values;
}

} // namespace Tools
