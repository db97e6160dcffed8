#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// A truth value. It stays as constructed; `BooleanObj` makes one.
class EXPORTED Boolean : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Boolean;
    static constexpr const char* kindName = "Boolean";

    // The truth.
    virtual bool value() const noexcept = 0;

    // Value
    Ref<::String> asText() const noexcept override; // "true" or "false"
    bool equal(Ref<Value> other) const noexcept override;
};

} // namespace Libraries::Files::PDF
