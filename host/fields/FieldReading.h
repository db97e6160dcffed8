#pragma once

#include <host/base/Budget.h>
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
// The text of a string or a name, which is counted before it is made; empty when the budget doesn't have it.
std::string textWithin(Budget& budget, const PDF::String& string) noexcept;
std::string textWithin(Budget& budget, const ::String& name) noexcept;
// `Opt`. An element that is not an option keeps its place, with empty texts, so that the others keep theirs. Ends where
// the budget does.
std::vector<FieldOption> optionsOf(
    const PDF::Document& document, const FieldEntries& entries, Budget& budget) noexcept;
// The names of the states of a widget other than "Off", as written: the keys of its normal appearance. None when the
// budget doesn't have them.
std::vector<Ref<::String>> statesOf(
    const PDF::Document& document, const PDF::Dictionary& widget, Budget& budget) noexcept;
// Whether there is something in a signature field.
bool isSigned(const FieldEntries& entries) noexcept;

} // namespace Host
