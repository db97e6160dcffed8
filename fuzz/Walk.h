#pragma once

#include "Check.h"
#include "Forecast.h"

#include <forms/Field.h>
#include <forms/Form.h>

namespace Fuzz {

// Asks a document that was just opened from `file` for everything that there is.
void walk(const Ref<PDF::Document>& document, std::string_view file, Allowance& allowance) noexcept;

// Every field of the form, those above before those below; empty without a form.
std::vector<Ref<PDF::Field>> fieldsOf(const Ref<PDF::Document>& document) noexcept;

} // namespace Fuzz
