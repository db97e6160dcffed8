#pragma once

#include <platform/Stripe.h>

namespace Host {

// Whether two stripes of 4-byte elements hold the same, read a block at a time; false when one is null or can't be
// read. Their positions stay.
bool haveSameData(const Ref<Interfaces::Stripe>& a, const Ref<Interfaces::Stripe>& b) noexcept;

} // namespace Host
