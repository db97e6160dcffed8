#pragma once

#include <host/fields/FieldEntries.h>
#include <host/fields/FieldKind.h>
#include <host/fields/FieldValue.h>

#include <optional>

namespace Host {

// What the dictionaries of a field say, for those that list and those that fill.

FieldKind kindOf(const FieldEntries& entries) noexcept;
// The integer part of `Ff`, cut to 32 bits.
std::uint32_t flagsOf(const FieldEntries& entries) noexcept;
std::optional<std::int64_t> maxLengthOf(const FieldEntries& entries) noexcept;
// `Opt`. An element that is not an option keeps its place, with empty texts, so that the others keep theirs.
std::vector<FieldOption> optionsOf(const PDF::Document& document, const FieldEntries& entries) noexcept;
// The names of the states of a widget other than "Off", as written: the keys of its normal appearance.
std::vector<Ref<::String>> statesOf(const PDF::Document& document, const PDF::Dictionary& widget) noexcept;
// Whether there is something in a signature field.
bool isSigned(const FieldEntries& entries) noexcept;

} // namespace Host
