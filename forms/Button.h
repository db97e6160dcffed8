#pragma once

#include <forms/Field.h>
#include <platform/TVector.h>

namespace Libraries::Files::PDF {

class Array;
class Name;

namespace Fields {

// A check box, a group of radio buttons or a push button; only `flags` tells them apart. Its value and
// its appearance state are two entries, and setting one deliberately leaves the other alone, as it does
// all else in the dictionary: a caller asks `states`, sets the value, and sets the appearance state on
// the field that is the widget.
//
// The entries are read at each call. Where an operation gives null for an absent entry it leaves
// `ErrNotAvailable`; for one of another kind, a reference included, it leaves `ErrWrongType`, with a line.
class EXPORTED Button : public virtual Field {
public:
    // Puts the name of a state under `V`; null removes the entry. Any name is taken, also one that
    // `states` doesn't give. False with `ErrPushButton` for a name on a push button, with
    // `ErrInvalidArgument` for a name without text.
    virtual bool setValue(Ref<Name> name) noexcept = 0;
    // `V` and `DV`.
    virtual Ref<Name> value() const noexcept = 0;
    virtual Ref<Name> defaultValue() const noexcept = 0;
    // The same as `setValue` for `AS`, with the same codes.
    virtual bool setAppearanceState(Ref<Name> name) noexcept = 0;
    // `AS`.
    virtual Ref<Name> appearanceState() const noexcept = 0;
    // `Opt`.
    virtual Ref<Array> options() const noexcept = 0;
    // The values that the button can take: the elements of `Opt`, which must be names, in their order;
    // without any, the keys of the dictionary `N` in the dictionary `AP` in key order. Both must be in
    // the field's own dictionary, not a reference away; the children are not looked at. Empty with
    // `ErrNoResource` for an element of `Opt` that is no name; empty with a line of level 3, and the code of
    // the lookup, when `AP` or `N` is no dictionary; empty with such a line, and no code of its own, when
    // `N` is empty. Keys that make no name, null and empty ones of an application's own dictionary, are skipped.
    // A success may leave `ErrNotAvailable`, or the code of a skipped key.
    virtual StackVector<Ref<Name>> states() const noexcept = 0;
};

} // namespace Fields
} // namespace Libraries::Files::PDF
