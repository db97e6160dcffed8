#pragma once

#include <document/Document.h>
#include <values/Dictionary.h>

namespace Libraries::Files::PDF {

// The value itself or, for a reference, the value of the object that it names; that one is given as it is, a
// reference included. Null for null, and null with `ErrNotFound` for a reference to nothing. Never logs.
EXPORTED Ref<Value> resolve(const Document& document, const Ref<Value>& value) noexcept;

// The same as a value of one kind; null, with the slot as `resolve` leaves it, for a value of another.
template <class Kind>
Ref<Kind> resolveAs(const Document& document, const Ref<Value>& value) noexcept
{
    return valueAs<Kind>(resolve(document, value));
}

// The same for the entry of a dictionary; null with the codes of `Dictionary::find` where there is none.
template <class Kind>
Ref<Kind> resolveEntryAs(const Document& document, const Dictionary& dictionary, const Ref<::String>& key) noexcept
{
    return resolveAs<Kind>(document, dictionary.find(key));
}

} // namespace Libraries::Files::PDF
