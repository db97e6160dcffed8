#pragma once

#include <values/ObjectRef.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// A reference that an application makes.
class EXPORTED ObjectRefObj final : public ValueObj, public virtual ObjectRef {
public:
    // To the object of these numbers, which need not be there.
    ObjectRefObj(std::uint32_t id, std::uint16_t generation) noexcept
        : ValueObj(kind), _id(id), _generation(generation)
    {
    }

    // ObjectRef
    std::uint32_t id() const noexcept override { return _id; }
    std::uint16_t generation() const noexcept override { return _generation; }

private:
    const std::uint32_t _id;
    const std::uint16_t _generation;
};

} // namespace Libraries::Files::PDF
