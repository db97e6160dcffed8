#pragma once

#include <host/exchange/FieldValues.h>
#include <host/fields/Fill.h>
#include <host/fields/Flatten.h>
#include <tools/CommandLine.h>

namespace Tools {

// The options of the programs that fill forms.
OptionGroup fillOptions();
// Those of them that go for all texts that are drawn.
OptionGroup textOptions();
// What the former say; the reason why it can't be done otherwise.
Host::Result<Host::FillOptions> fillOptionsOf(const CommandLine& line);

// What becomes of values for fields that the form doesn't have, or that take none.
enum class UnknownFields { Refused, Skipped };

// Sets all values, and gives the reason for each that is refused, which begins with the name of its field; none when
// all are set. Those that are skipped are warned of.
std::vector<Host::Refusal> fillAll(Host::FormFiller& filler, const Host::FieldValues& values,
    const Host::FillOptions& how, UnknownFields unknown, std::vector<std::string>& warnings);
// How the fields that they don't fill are drawn and flattened.
Host::FlattenOptions flattenOptionsOf(const CommandLine& line);

// Adds those that aren't there yet.
void addWarnings(std::vector<std::string>& warnings, const std::vector<std::string>& more);

} // namespace Tools
