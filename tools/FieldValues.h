#pragma once

#include <host/exchange/FieldValues.h>
#include <tools/CommandLine.h>

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace Tools {

using Host::FieldValues;

// Values from JSON: an object from a name to a text, true, false, or a list of texts. Null leaves the field as it is.
Host::Result<FieldValues> valuesOf(const nlohmann::json& object);

// The values of a form in a file of their own, in one of four formats, and how it is read again.
enum class ValueFormat { Json, Fdf, Xfdf, Csv };

// The format that is called so; none for another text.
std::optional<ValueFormat> formatCalled(std::string_view name);
// What the file holds. Refused: an XFDF file of characters that XML doesn't take.
Host::Result<std::string> writeValues(const Host::FormFields& form, ValueFormat format, char separator);

// How CSV is separated.
constexpr Option separatorOption = {"--separator", "comma|semicolon|tab", "what is between the cells of CSV"};
char separatorOf(const CommandLine& line);

// The options of the programs that read values.
OptionGroup valueOptions();
// The values of a file of up to `Limits::maxValuesFile` bytes. Without the option its format is the one of the file's
// name, or else of its first characters. Whatever is wrong with the file makes it unusable.
Host::Result<FieldValues> readValues(const std::string& path, const CommandLine& line);

} // namespace Tools
