#pragma once

#include <platform/TVector.h>
#include <values/Value.h>

namespace Libraries::Files::PDF {

class Array;
class Name;
class Number;
class ObjectRef;
class String;

// A map from key text to value, always held and walked in ascending key order, whatever order a file
// had. Keys carry no leading solidus. Entries are shared, never copied, and never null.
class EXPORTED Dictionary : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Dictionary;
    static constexpr const char* kindName = "Dictionary";

    // An empty dictionary, of which the first `set` is the first change.
    static Ref<Dictionary> create() noexcept;

    // The keys in order, as a list of the caller's own; an empty list for an empty dictionary.
    virtual Ref<TVector<Ref<::String>>> keys() const noexcept = 0;
    // The value under `key`, as it is: a reference is not followed. Null with `ErrNotAvailable`
    // when there is no entry, with `ErrNullArgument` or `ErrInvalidArgument` for a null or an empty
    // key. Never logs.
    virtual Ref<Value> find(Ref<::String> key) const noexcept = 0;
    // Puts `value` under `key`, in place of an earlier one; a null value removes the entry, and there
    // need not be one. Every success counts as a change, also when nothing differs afterwards. False
    // with `ErrNullArgument` or `ErrInvalidArgument` for a null or an empty key.
    virtual bool set(Ref<::String> key, Ref<Value> value) noexcept = 0;

    // The value as one of a kind. Null with the code of `find` when there is none, which logs unless
    // the entry is `optional`; null with a line and `ErrWrongType`, in any case, when it is of another
    // kind, a reference included.
    Ref<ObjectRef> findAsObjectRef(Ref<::String> key, bool optional) const noexcept;
    Ref<Array> findAsArray(Ref<::String> key, bool optional) const noexcept;
    Ref<Dictionary> findAsDictionary(Ref<::String> key, bool optional) const noexcept;
    Ref<Name> findAsName(Ref<::String> key, bool optional) const noexcept;
    Ref<Number> findAsNumber(Ref<::String> key, bool optional) const noexcept;
    Ref<String> findAsString(Ref<::String> key, bool optional) const noexcept;

    // Value. A dictionary has changed when it was set, or when a dictionary or stream in it has.
    Ref<::String> asText() const noexcept override;
    bool equal(Ref<Value> other) const noexcept override; // the same keys with equal values, deep

private:
    template <class Kind>
    Ref<Kind> findAs(Ref<::String> key, bool optional) const noexcept;
};

} // namespace Libraries::Files::PDF
