#pragma once

#include <platform/Pool.h>
#include <values/Array.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class ArrayObj final : public ValueObj, public virtual Array {
public:
    using Elements = std::vector<Ref<Value>, PoolAllocator<Ref<Value>>>;

    explicit ArrayObj(Elements elements) noexcept : ValueObj(kind), _elements(std::move(elements)) {}

    // Array
    std::uint64_t size() const noexcept override { return _elements.size(); }
    Ref<Value> get(std::uint64_t index) const noexcept override;
    bool append(Ref<Value> value) noexcept override;

private:
    Elements _elements;
};

} // namespace Libraries::Files::PDF
