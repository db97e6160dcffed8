#pragma once

#include <host/base/Result.h>

namespace Import {

using Host::Reason;

// Ends an opening from wherever it is. Deliberately no `std::exception`: libqpdf catches those and goes on.
struct Stop {
    Host::Refusal refusal;
};

[[noreturn]] inline void stop(Reason reason, std::string message)
{
    throw Stop{{reason, std::move(message)}};
}

} // namespace Import
