#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// A number, kept as the two groups of digits on either side of the decimal point, each an
// integer: 12.50 is 12 and 50. Deliberate, and never a floating-point value: leading zeros of the
// fraction are lost, so 1.05 and 1.5 are the same pair, and so is the sign of a zero integer part,
// as in -0.5. `NumberObj` makes one.
class EXPORTED Number : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Number;
    static constexpr const char* kindName = "Number";

    // The digits before the point with the sign, and those after it, each as an integer; 0 without any.
    virtual std::int64_t intPart() const noexcept = 0;
    virtual std::uint64_t fracPart() const noexcept = 0;

    // Value
    Ref<::String> asText() const noexcept override; // always with a point: 5 reads "5.0"
    bool equal(Ref<Value> other) const noexcept override; // both parts: 1.5 and 1.50 differ
};

} // namespace Libraries::Files::PDF
