#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

// A reference to an indirect object, by number. `Document::object` resolves it. `ObjectRefObj` makes
// one.
class EXPORTED ObjectRef : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::ObjectRef;
    static constexpr const char* kindName = "ObjectRef";

    // The two numbers of the object, which need not be there.
    virtual std::uint32_t id() const noexcept = 0;
    virtual std::uint16_t generation() const noexcept = 0;

    // Value
    Ref<::String> asText() const noexcept override; // "12 (0)"
    bool equal(Ref<Value> other) const noexcept override; // the numbers; neither side is resolved
};

} // namespace Libraries::Files::PDF
