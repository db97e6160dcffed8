#pragma once

#include <platform/Error.h>
#include <platform/Object.h>
#include <platform/String.h>

namespace Libraries::Files::PDF {

// The root of the values that a PDF file is made of. Values are shared by `Ref`, never copied.
// To use one as what it is, ask `type` and take it by `valueAs`, or use the typed accessors of `Array`,
// `Dictionary` and `Object`. A value belongs to one thread at a time, except that scalars may be read from
// any: only the `Length` number of a stream ever changes.
//
// A value must not contain itself, and values that an application nests deeper than the 500 levels
// that a file may have are its own risk: every walk, the release included, goes as deep as they do.
class EXPORTED Value : public virtual RefCount {
public:
    // The kinds. The numbers are part of the interface: log lines print them.
    enum class Type : std::uint32_t {
        Invalid = 0, // no value has it; an `Object` without value answers so
        Name = 1,
        Boolean = 2,
        Number = 3,
        String = 4,
        ObjectRef = 5,
        Dictionary = 6,
        Stream = 7,
        Array = 8,
        Null = 9,
    };

    // The kind, by which `valueAs` and the typed accessors go.
    virtual Type type() const noexcept = 0;
    // A text for logs and diagnostics. It is not PDF syntax, which `writtenText` gives.
    virtual Ref<::String> asText() const noexcept = 0;
    // Deep comparison. Values of different kinds are never equal, a reference is never resolved, and
    // a stream is equal to nothing, itself included. False for null.
    virtual bool equal(Ref<Value> other) const noexcept = 0;
    // Whether the value was changed since it was read. Only dictionaries and streams tell; what is
    // in an array does not count.
    virtual bool changed() const noexcept = 0;
};

// The value as class `Kind`, or null: for a null value, one of another kind, and one whose class
// isn't what its kind says.
template <class Kind>
EXPORTED Ref<Kind> valueAs(const Ref<Value>& value) noexcept;

} // namespace Libraries::Files::PDF
