#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// A truth value. It stays as constructed; `BooleanObj` makes one.
class EXPORTED Boolean : public virtual Value {
public:
    static constexpr Type kind = Type::Boolean;
    static constexpr const char* kindName = "Boolean";

    virtual bool value() const noexcept = 0;

    // Value
    Ref<::String> asText() const noexcept override; // "true" or "false"
    bool equal(Ref<Value> other) const noexcept override;
};

} // namespace Libraries::Files::PDF
