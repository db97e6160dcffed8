#pragma once

#include <values/Number.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class EXPORTED NumberObj final : public ValueObj, public virtual Number {
public:
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
