#pragma once

#include <values/Boolean.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// A truth value that an application makes.
class EXPORTED BooleanObj final : public ValueObj, public virtual Boolean {
public:
    // Of this value.
    explicit BooleanObj(bool value) noexcept : ValueObj(kind), _value(value) {}

    // Boolean
    bool value() const noexcept override { return _value; }

private:
    const bool _value;
};

} // namespace Libraries::Files::PDF
