#pragma once

#include <values/Value.h>

namespace Libraries::Files::PDF {

class Array;
class Dictionary;
class Stream;

// An indirect object: a number, a generation and a value, fixed at construction. It is no value
// itself: in arrays and dictionaries an `ObjectRef` stands for it.
class EXPORTED Object : public virtual RefCount {
public:
    // The two numbers that references name it by.
    virtual std::uint32_t id() const noexcept = 0;
    virtual std::uint16_t generation() const noexcept = 0;
    // Every object of a document that was opened has a value.
    virtual Ref<Value> value() const noexcept = 0;

    // "12 (0)", as the `ObjectRef` of these numbers reads. The value does not appear.
    Ref<::String> asText() const noexcept;
    // The kind of the value; `Invalid` with a line and `ErrNoValue` when there is none.
    Value::Type valueType() const noexcept;
    // The value as one of a kind; a reference is not resolved. Null with a line, and `ErrNoValue`
    // when there is none or `ErrWrongType` when it is of another kind.
    Ref<Dictionary> valueAsDictionary() const noexcept;
    Ref<Array> valueAsArray() const noexcept;
    Ref<Stream> valueAsStream() const noexcept;
};

} // namespace Libraries::Files::PDF
