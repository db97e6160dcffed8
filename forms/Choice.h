#pragma once

#include <forms/Field.h>

namespace Libraries::Files::PDF {

class Array;

namespace Fields {

// A list box or a combo box. Its value is a string or, with the flag `MultiSelect`, an array of them.
// Deliberately neither is compared with `options`, and `selectedIndices` stays as it was.
//
// The entries are read at each call. Where an operation gives null for an absent entry it leaves
// `ErrNotAvailable`.
class EXPORTED Choice : public virtual Field {
public:
    // Puts a `String` under `V`, or on a field with `MultiSelect` an `Array` of them; null removes the
    // entry. An empty array removes it too, and of an array of one string the string alone is kept, each
    // with a line of level 3. A success may leave `ErrNotAvailable`. False with a line and
    // `ErrInvalidArgument`, and the old value stays, for anything else.
    virtual bool setValue(Ref<Value> value) noexcept = 0;
    // `V` and `DV`, of whatever kind they are; a reference is not followed.
    virtual Ref<Value> value() const noexcept = 0;
    virtual Ref<Value> defaultValue() const noexcept = 0;
    // `Opt` and `I`. For an entry of another kind, a reference included, null with a line and
    // `ErrWrongType`.
    virtual Ref<Array> options() const noexcept = 0;
    virtual Ref<Array> selectedIndices() const noexcept = 0;
};

} // namespace Fields
} // namespace Libraries::Files::PDF
