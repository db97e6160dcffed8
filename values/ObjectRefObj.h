#pragma once

#include <values/ObjectRef.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class EXPORTED ObjectRefObj final : public ValueObj, public virtual ObjectRef {
public:
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
