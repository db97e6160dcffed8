#pragma once

#include <values/Array.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class ArrayObj final : public ValueObj, public virtual Array {
public:
    explicit ArrayObj(std::vector<Ref<Value>> elements) noexcept : ValueObj(kind), _elements(std::move(elements)) {}

    // Array
    std::uint64_t size() const noexcept override { return _elements.size(); }
    Ref<Value> get(std::uint64_t index) const noexcept override;
    bool append(Ref<Value> value) noexcept override;

private:
    std::vector<Ref<Value>> _elements;
};

} // namespace Libraries::Files::PDF
