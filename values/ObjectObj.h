#pragma once

#include <values/Object.h>

namespace Libraries::Files::PDF {

class ObjectObj final : public ::Object, public virtual Object {
public:
    ObjectObj(std::uint32_t id, std::uint16_t generation, Ref<Value> value) noexcept
        : _id(id), _generation(generation), _value(std::move(value))
    {
    }

    // Object
    std::uint32_t id() const noexcept override { return _id; }
    std::uint16_t generation() const noexcept override { return _generation; }
    Ref<Value> value() const noexcept override { return _value; }

private:
    const std::uint32_t _id;
    const std::uint16_t _generation;
    const Ref<Value> _value;
};

} // namespace Libraries::Files::PDF
