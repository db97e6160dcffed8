#pragma once

#include <document/Resolve.h>
#include <values/Value.h>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// What a value leads to when every reference is followed; null when that is nothing, and after a chain of more than
// `Limits::maxReferenceChain`. May leave a code, which is no failure.
Ref<PDF::Value> followAll(const PDF::Document& document, Ref<PDF::Value> value) noexcept;
// The same for the entry of a dictionary; null also for the null value, which means the same as no entry.
Ref<PDF::Value> followEntry(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const Ref<::String>& key) noexcept;

// The same as a value of one kind, null for another.
template <class Kind>
Ref<Kind> followAs(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept
{
    return PDF::valueAs<Kind>(followAll(document, value));
}
template <class Kind>
Ref<Kind> followEntryAs(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const Ref<::String>& key) noexcept
{
    return followAs<Kind>(document, dictionary.find(key));
}

// Whether a value is this name.
bool isNamed(const Ref<PDF::Value>& value, const char* name) noexcept;

} // namespace Host
