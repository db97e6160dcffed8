#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// A name, without the solidus of the file and as it is there: "#" sequences aren't decoded.
class EXPORTED Name : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Name;
    static constexpr const char* kindName = "Name";

    // Null with `ErrNullArgument` for a null text, with `ErrInvalidArgument` for an empty one.
    static Ref<Name> create(Ref<::String> value) noexcept;

    // The characters; never null, never empty.
    virtual Ref<::String> value() const noexcept = 0;

    // Value
    Ref<::String> asText() const noexcept override; // `value()` itself
    bool equal(Ref<Value> other) const noexcept override;
};

} // namespace Libraries::Files::PDF
