#pragma once

#include <host/exchange/FieldValues.h>

#include <string>
#include <string_view>

namespace Host {

// Values of fields in FDF, the format's own file for them: PDF syntax without a table of objects.

// The values that an FDF file gives fields: each V below `Fields` under the whole name of its field. A name gives the
// state of a button, an array several choices, a number its digits. Fields without a value or with an empty name as one
// are left out, and so is what else the file has, such as looks, actions and comments. Of an object that is there twice
// the last counts.
//
// Refused, with `BrokenRule`: what has no `FDF` dictionary, brackets that don't match, fields that lead in circles or
// are listed twice, and two values for one name. With `Unsupported`: a value of any other kind, one of a text in an
// `Encoding` other than UTF-8, and an encrypted file. With `LimitReached`: a file of 4 GiB, names deeper or
// longer than a form may have them, and values that become much larger than the file since fields share them.
EXPORTED Result<FieldValues> readFdf(std::string_view file) noexcept;

// An FDF file with all fields of a form that take a value; those without one stay as they are where the file is read.
// Names are nested at their points. Texts are ASCII or UTF-16, so that the file is ASCII and every reader takes them
// alike. Any text can be in it.
EXPORTED std::string writeFdf(const FormFields& form) noexcept;

} // namespace Host
