#pragma once

#include <values/Value.h>

#include <vector>

namespace Libraries::Files::PDF {

class Name;
class ObjectRef;
class String;

// An ordered list of values. It can grow; elements are neither replaced nor removed.
class EXPORTED Array : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Array;
    static constexpr const char* kindName = "Array";

    // An array of the elements of the list, which it shares.
    static Ref<Array> create(const std::vector<Ref<Value>>& elements) noexcept;

    // In elements.
    virtual std::uint64_t size() const noexcept = 0;
    // The element as it is: a reference is not followed. Null, and no code, past the end.
    virtual Ref<Value> get(std::uint64_t index) const noexcept = 0;
    // Adds an element at the end. False with `ErrNullArgument` for null. Deliberate: no change is
    // recorded, `changed` stays false.
    virtual bool append(Ref<Value> value) noexcept = 0;

    // The element as a value of one kind. Null with a line and `ErrWrongType` when it is of another;
    // null with a line, and the code that was set before, when there is none at `index`.
    Ref<ObjectRef> getAsObjectRef(std::uint64_t index) const noexcept;
    Ref<Name> getAsName(std::uint64_t index) const noexcept;
    Ref<String> getAsString(std::uint64_t index) const noexcept;

    // Value
    Ref<::String> asText() const noexcept override;
    bool equal(Ref<Value> other) const noexcept override; // by position, deep

private:
    template <class Kind>
    Ref<Kind> getAs(std::uint64_t index) const noexcept;
};

} // namespace Libraries::Files::PDF
