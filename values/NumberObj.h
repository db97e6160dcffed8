#pragma once

#include <values/Number.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// A number that an application makes.
class EXPORTED NumberObj final : public ValueObj, public virtual Number {
public:
    // Of the digits before the point, with the sign, and those after it, as two integers: 12.50 is 12 and 50.
    NumberObj(std::int64_t intPart, std::uint64_t fracPart) noexcept
        : ValueObj(kind), _intPart(intPart), _fracPart(fracPart)
    {
    }

    // Number
    std::int64_t intPart() const noexcept override { return _intPart; }
    std::uint64_t fracPart() const noexcept override { return _fracPart; }

    // Replaces the integer part in place, for the Length of a stream whose data changes. The object
    // stays the same, the fraction too, and nothing records the change.
    void setIntPart(std::int64_t intPart) noexcept { _intPart = intPart; }

private:
    std::int64_t _intPart;
    const std::uint64_t _fracPart;
};

} // namespace Libraries::Files::PDF
