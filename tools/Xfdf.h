#pragma once

#include <host/exchange/FieldValues.h>

#include <string>
#include <string_view>

namespace Tools {

// The values that an XFDF file, which is FDF in XML, gives fields: each `value` of a `field` under its whole name,
// several as a list. A field without one is left out, and so is all else that the file has. It may be in UTF-8, UTF-16
// or UTF-32, or in Latin-1 when it says so.
//
// Refused: what is not XML with an `xfdf` element, a document type, since entities could make a small file large, an
// entity that XML doesn't have itself, another encoding, names deeper or longer than a form may have them,
// and two values for one name. With `Unsupported` in a build without pugixml.
Host::Result<Host::FieldValues> readXfdf(std::string_view file);

// An XFDF file with all fields of a form that take a value; one without a value stays as it is where the file is read.
// A list of no choices becomes an empty choice. Refused, with the name of the field: the characters that XML doesn't
// take, those below the space but tab and line ends, and U+FFFE and U+FFFF.
Host::Result<std::string> writeXfdf(const Host::FormFields& form);

} // namespace Tools
