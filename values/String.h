#pragma once

#include <platform/TConstArray.h>
#include <values/Value.h>

namespace Libraries::Files::PDF {

// A string, in one of two forms: a text, as a literal string of a file has it, or bytes, as a
// hexadecimal one does. At most one of `value` and `data` is not null. The two forms are never
// equal, even if they read the same.
class EXPORTED String : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::String;
    static constexpr const char* kindName = "String";

    // A text of code points up to 127 stays a text; any other becomes bytes: UTF-16, big-endian,
    // with its byte order mark. Null with `ErrNullArgument` for null.
    static Ref<String> create(Ref<::String> text) noexcept;
    // The bytes as they are. Null with `ErrNullArgument` for null.
    static Ref<String> create(Ref<TConstArray<std::uint8_t>> bytes) noexcept;

    // The text form; null when the string holds bytes. Called by its qualified name it gives the same.
    virtual Ref<::String> value() const noexcept = 0;
    // The byte form; null when the string holds a text.
    virtual Ref<TConstArray<std::uint8_t>> data() const noexcept = 0;

    // Value. The text itself; of bytes, the characters when they are UTF-16 with a byte order mark,
    // else two hexadecimal digits a byte. Null with `ErrNoResource` for a string of neither form.
    Ref<::String> asText() const noexcept override;
    bool equal(Ref<Value> other) const noexcept override;
};

} // namespace Libraries::Files::PDF
