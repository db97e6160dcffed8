#pragma once

#include <string>
#include <string_view>

// How values are spelled so that the core, whose reader is strict and has rules of its own, reads what they mean.
namespace Import {

// What a token became.
enum class Spelled {
    AsIs,    // what it says
    Rounded, // the nearest that the core can hold
};

// Appends a name, of which `name` are the bytes that it means, without the solidus. A zero byte, which no name has, is
// a "#" that begins no escape.
void spellName(std::string& text, std::string_view name);

// Where a string is spelled. In the trailer no angle brackets may be in a literal one: the core counts them to find
// where it begins.
enum class Place { Object, Trailer };

// Appends a string of these bytes: literal where the core reads each byte as itself, else hexadecimal. Text in UTF-16
// is always hexadecimal, since the core knows it by its bytes.
void spellString(std::string& text, std::string_view bytes, Place place);

// Appends a number with a point, of which `token` are an optional sign, and digits before and after the point.
Spelled spellReal(std::string& text, std::string_view token);

} // namespace Import
