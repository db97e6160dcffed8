#pragma once

#include <values/Number.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// A number that an application makes.
class EXPORTED NumberObj : public ValueObj, public virtual Number {
public:
    // What the two integers don't say of the digits of a file. As it begins, it says that there is no more to them:
    // the number is written as the integer part, and, unless the fraction is 0, a point and the fraction.
    struct Spelling {
        enum Flag : std::uint8_t {
            Minus = 1,    // before a zero
            Plus = 2,     // before the integer part
            Point = 4,    // although no digit follows it
            NoDigits = 8, // before the point, where the integer part is 0
            Word = 16,    // none of the others counts: the number is a `WordNumberObj`
        };
        std::uint8_t flags = 0;
        std::uint8_t wholeZeros = 0;    // before the integer part
        std::uint8_t fractionZeros = 0; // before the fraction; all its digits where it is 0

        bool has(Flag flag) const noexcept { return (flags & flag) != 0; }
        bool operator==(const Spelling&) const noexcept = default;
    };

    // Of the digits before the point, with the sign, and those after it, as two integers: 12.50 is 12 and 50.
    NumberObj(std::int64_t intPart, std::uint64_t fracPart) noexcept : NumberObj(intPart, fracPart, Spelling()) {}
    // Of a file.
    NumberObj(std::int64_t intPart, std::uint64_t fracPart, Spelling spelling) noexcept
        : ValueObj(kind), _spelling(spelling), _intPart(intPart), _fracPart(fracPart)
    {
    }

    // Number
    std::int64_t intPart() const noexcept final { return _intPart; }
    std::uint64_t fracPart() const noexcept final { return _fracPart; }

    // What else the file said; nothing of a number that an application made.
    Spelling spelling() const noexcept { return _spelling; }

    // Replaces the integer part in place, for the Length of a stream whose data changes. The object
    // stays the same, the fraction too, and nothing records the change. The spelling is forgotten.
    void setIntPart(std::int64_t intPart) noexcept
    {
        _intPart = intPart;
        _spelling = {};
    }

private:
    Spelling _spelling; // first, where the kind leaves room
    std::int64_t _intPart;
    const std::uint64_t _fracPart;
};

} // namespace Libraries::Files::PDF
