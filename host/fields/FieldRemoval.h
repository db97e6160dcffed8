#pragma once

#include <host/pages/Edit.h>

#include <unordered_set>

namespace Host {

// Takes fields and widgets, as their dictionaries, out of the lists of the AcroForm, with all fields above that have
// nothing left, as a part of an edit. Whether fields are left.
bool removeFields(Edit& edit, const Ref<PDF::Dictionary>& form,
    const std::unordered_set<const PDF::Dictionary*>& gone) noexcept;

} // namespace Host
