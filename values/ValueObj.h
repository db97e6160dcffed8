#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// The base of the classes that hold values.
class EXPORTED ValueObj : public ::Object, public virtual Value {
public:
    // Value. All kinds but dictionaries and streams deliberately never report a change.
    Type type() const noexcept override { return _type; }
    bool changed() const noexcept override { return false; }

protected:
    // The kind never changes.
    explicit ValueObj(Type type) noexcept : _type(type) {}

private:
    const Type _type;
};

} // namespace Libraries::Files::PDF
