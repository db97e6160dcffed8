#pragma once

#include <host/exchange/FieldValues.h>
#include <host/fields/Fill.h>
#include <tools/CommandLine.h>

namespace Tools {

// The options of the programs that fill forms.
OptionGroup fillOptions();
// What they say; the reason why it can't be done otherwise.
Host::Result<Host::FillOptions> fillOptionsOf(const CommandLine& line);

// What becomes of values for fields that the form doesn't have, or that take none.
enum class UnknownFields { Refused, Skipped };

// Sets all values, and gives the reason for each that is refused, which begins with the name of its field; none when
// all are set. Those that are skipped are warned of.
std::vector<Host::Refusal> fillAll(Host::FormFiller& filler, const Host::FieldValues& values,
    const Host::FillOptions& how, UnknownFields unknown, std::vector<std::string>& warnings);

} // namespace Tools
