#pragma once

#include <platform/String.h>

namespace Libraries::Files::PDF {

class Dictionary;
class String;
class Value;

// A field or a widget of a form: a view of one dictionary, the very one in the document's object
// table. A change made here is a change of that dictionary and of nothing else, so that
// `Document::changed` tells it and `Document::write` saves it.
//
// Deliberately nothing is inherited and nothing merged: each field reads its own dictionary only, and a
// widget in `Kids` without `FT` is a field of its own. No appearance is drawn. A field is held by its
// parent and knows its parent weakly. To use one as what it is, ask `type` and then `cast` to
// `Fields::Button`, `Text`, `Choice` or `Signature`.
//
// `type`, `flags` and `child` are those of the building of the form. The other attributes, where nothing
// else is said, are read on the first call and kept; a later change of the dictionary isn't seen. A
// reference in place of a value is not followed. An absent entry may leave `ErrNotAvailable` the first time
// that it is looked at, by a search or a log line as well; one of another kind gives one line and no code,
// and counts as absent. So `Kids` that are no array, or a reference to one, count as absent.
class EXPORTED Field : public virtual RefCount {
public:
    // The kinds, by `FT`.
    enum class Type : std::uint32_t {
        Generic = 1, // no `FT`: a node of the tree, or a widget
        Button = 2,
        Text = 3,
        Choice = 4,
        Signature = 5,
    };

    // `Ff`, under the numbers of the PDF standard; any other bits come along. Some share a number, as
    // the kind of the field decides which is meant.
    enum Flags : std::uint32_t {
        NoFlags = 0,
        ReadOnly = 0x1,
        Required = 0x2,
        NoExport = 0x4,
        // Buttons
        NoToggleToOff = 0x4000,
        Radio = 0x8000,
        Pushbutton = 0x10000,
        RadiosInUnison = 0x2000000,
        // Texts
        Multiline = 0x1000,
        Password = 0x2000,
        FileSelect = 0x100000,
        DoNotScroll = 0x800000,
        Comb = 0x1000000,
        RichText = 0x2000000,
        // Choices
        Combo = 0x20000,
        Edit = 0x40000,
        Sort = 0x80000,
        MultiSelect = 0x200000,
        CommitOnSelectionChange = 0x4000000,
        // Texts and choices
        DoNotSpellCheck = 0x400000,
    };

    // How a text is aligned in its field.
    enum class Quadding : std::uint32_t {
        NotSet = 0, // also for a number that stands for nothing
        Left = 1,
        Centred = 2,
        Right = 3,
    };

    // The kind by the field's own `FT`; `Generic` without one.
    virtual Type type() const noexcept = 0;
    // The integer part of `Ff`, cut to 32 bits; 0 when absent.
    virtual Flags flags() const noexcept = 0;
    // Null at the top of the tree, and for a parent that is gone.
    virtual Ref<Field> parent() const noexcept = 0;
    // The number of fields that `Kids` lists.
    virtual std::uint64_t childCount() const noexcept = 0;
    // Null with `ErrOutOfRange` at or past the count.
    virtual Ref<Field> child(std::uint64_t index) const noexcept = 0;
    // `T`, the field's own part of its name, and the names `TU` and `TM`; null when absent.
    virtual Ref<String> name() const noexcept = 0;
    virtual Ref<String> alternateName() const noexcept = 0;
    virtual Ref<String> mappingName() const noexcept = 0;
    // Puts a value under `AP`, in place of an earlier one, without looking at it; null removes the entry.
    // True.
    virtual bool setAppearance(Ref<Value> value) noexcept = 0;
    // `AP` as it is, read at each call; null with `ErrNotAvailable` when absent.
    virtual Ref<Value> appearance() const noexcept = 0;
    // `DR`; null when absent.
    virtual Ref<Dictionary> defaultResources() const noexcept = 0;
    // `DA`; null when absent.
    virtual Ref<String> defaultAppearance() const noexcept = 0;
    // `Q`; a number other than 0, 1 and 2 gives `NotSet`, with one line.
    virtual Quadding quadding() const noexcept = 0;

    // The first child that answers to `name`, by the rules and with the codes of `Form::fieldByName`.
    Ref<Field> fieldByName(Ref<::String> name) const noexcept;
};

} // namespace Libraries::Files::PDF
