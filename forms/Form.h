#pragma once

#include <platform/String.h>

namespace Libraries::Files::PDF {

class Array;
class Dictionary;
class Field;
class Number;
class String;

// The interactive form of a document: the `AcroForm` dictionary as a tree of fields, one field per
// dictionary. `Document::form` builds it once, and the document owns it; a form that somebody else
// still holds doesn't keep the document alive. The tree stays as it was built: a `Fields` or `Kids`
// array that is changed later isn't seen. Like its document it belongs to one thread at a time.
//
// Forms and fields log under the filter "Lib.File.PDF.Form".
//
// The attributes are read from the form's own dictionary on the first call and kept; a later change of
// the dictionary isn't seen. A reference in place of a value is not followed. An absent entry may leave
// `ErrNotAvailable` the first time that it is looked at; one of another kind gives one line and no code, and
// counts as absent. So `Fields` that are no array, or a reference to one, make a form without fields.
//
// To use a field, include <forms/Field.h>.
class EXPORTED Form : public virtual RefCount {
public:
    // `NeedAppearances`; false when absent.
    virtual bool needAppearances() const noexcept = 0;
    // `Q`, as it is; null when absent.
    virtual Ref<Number> quadding() const noexcept = 0;
    // `DA`; null when absent.
    virtual Ref<String> defaultAppearance() const noexcept = 0;
    // `DR`; null when absent.
    virtual Ref<Dictionary> defaultResources() const noexcept = 0;
    // `CO`, with its elements as they are; null when absent.
    virtual Ref<Array> calculationOrder() const noexcept = 0;
    // The number of fields at the top of the tree.
    virtual std::uint64_t fieldCount() const noexcept = 0;
    // A field at the top, in the order of `Fields`. Null with `ErrOutOfRange` at or past the count.
    virtual Ref<Field> field(std::uint64_t index) const noexcept = 0;

    // The first field at the top that answers to `name`: a field with a `T` to the text of that, a field
    // without one to its index in decimal. The name is taken whole, points included. Null with
    // `ErrNoEntry` when there is none, with `ErrNullArgument` or `ErrInvalidArgument` for a null or an
    // empty name. The fields are walked one by one, so a name costs time in the number of the fields.
    Ref<Field> fieldByName(Ref<::String> name) const noexcept;
    // The field at the end of a path of names with "." between them, each sought among the children of
    // the one before. Empty pieces are skipped, so "a..b" is "a.b"; a name with a "." in it can't be
    // reached. Null with `ErrNoEntry` when a piece isn't found, with `ErrNullArgument` for null, with
    // `ErrInvalidArgument` for a path without any piece.
    Ref<Field> fieldByPath(Ref<::String> path) const noexcept;
};

} // namespace Libraries::Files::PDF
