#pragma once

#include <forms/Field.h>

namespace Libraries::Files::PDF::Fields {

// A text field. The appearance stays the old one after a value is set, unless the caller replaces it or
// has viewers draw it, by `NeedAppearances` of the form.
//
// The entries are read at each call. Where an operation gives null or 0 for an absent entry it leaves
// `ErrNotAvailable`; for one of another kind, a reference included, it leaves `ErrWrongType`, with a line.
class EXPORTED Text : public virtual Field {
public:
    // The integer part of `MaxLen`, the highest length of a value in characters; 0 when absent.
    virtual std::int64_t maxLength() const noexcept = 0;
    // Puts a text under `V`; null removes the entry. False with `ErrInvalidArgument`, and the old value
    // stays, when there is a `maxLength` other than 0 and the text is longer, or has neither form. A text
    // counts its characters. Bytes deliberately count as UTF-16 with a byte order mark, whatever they
    // are: half of them, less one, so that none and one count as -1. Lengths compare as signed numbers:
    // a negative `maxLength` refuses all else. Flags such as read-only are not consulted. A success
    // may leave `ErrNotAvailable`.
    virtual bool setValue(Ref<String> text) noexcept = 0;
    // `V` and `DV`.
    virtual Ref<String> value() const noexcept = 0;
    virtual Ref<String> defaultValue() const noexcept = 0;
};

} // namespace Libraries::Files::PDF::Fields
