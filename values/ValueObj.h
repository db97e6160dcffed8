#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// The base of the classes that hold values.
class EXPORTED ValueObj : public ::Object, public virtual Value {
public:
    // Value. All kinds but dictionaries and streams deliberately never report a change.
    Type type() const noexcept override { return Type(_type); }
    bool changed() const noexcept override { return false; }

protected:
    // The kind never changes.
    explicit ValueObj(Type type) noexcept : _type(static_cast<std::uint8_t>(type)) {}

private:
    // Narrow, and last, so that a derived class can use what is left of its word.
    const std::uint8_t _type;
};

} // namespace Libraries::Files::PDF
