#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// The null value. `NullObj` makes one.
class EXPORTED Null : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Null;
    static constexpr const char* kindName = "Null";

    // Value
    Ref<::String> asText() const noexcept override; // "Null"
    bool equal(Ref<Value> other) const noexcept override;
};

} // namespace Libraries::Files::PDF
