#pragma once

#include <string>
#include <variant>
#include <vector>

namespace Host {

// One entry of Opt. Where it has only one text, both are that text.
struct FieldOption {
    std::string exported;  // what becomes the value
    std::string displayed; // what people see
};

// The entries of a value: one text, the name of a state, or several texts of a list box with several chosen.
using FieldTexts = std::vector<std::string>;

// What goes into a field, in UTF-8. A text field takes a text. Check boxes and radio buttons take the name of
// a state or one of the field's export values, "on" or true where there is only one state, and "off" or
// false. List boxes and combo boxes take a choice, or, where the field allows it, any number of them, none included:
// by export value or else by what is displayed. An empty text that is not a choice selects none, and an editable
// combo box takes any text.
using FieldValue = std::variant<std::string, bool, std::vector<std::string>>;

} // namespace Host
