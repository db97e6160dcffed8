#pragma once

#include <forms/Report.h>
#include <platform/ConstantText.h>
#include <values/Dictionary.h>

namespace Libraries::Files::PDF {

// A row of the attribute table of a class: the entry of its dictionary, of kind `Kind`, and the bit that
// tells in its mask that the dictionary was consulted.
template <class Kind>
struct Attribute {
    const ConstantText& key;
    std::uint32_t bit;
};

// The entry as class `Kind`. Null with the code of `find` when there is none, and with a line, but no
// code, when it is of another kind.
template <class Kind>
Ref<Kind> findAttribute(const Dictionary& dictionary, const Ref<::String>& key) noexcept
{
    const Ref<Value> value = dictionary.find(key);
    if (!value)
        return nullptr;
    if (value->type() != Kind::kind)
        return formReport.line(
            "Unexpected type for value ", key, "; expected = ", Kind::kind, ", got = ", value->type());
    Ref<Kind> result = value.cast<Kind>();
    if (!result)
        return formReport.line("Failed to cast value to ", Kind::kindName, ": ", key);
    return result;
}

// On the first call hands the attribute to `store`, if it is there; afterwards does nothing.
template <class Kind, class Store>
void readAttribute(
    const Dictionary& dictionary, std::uint32_t& cached, const Attribute<Kind>& attribute, Store store) noexcept
{
    const std::uint32_t mask = 1u << attribute.bit;
    if (cached & mask)
        return;
    // Set before anything is logged, so that a log sink may ask for the same attribute.
    cached |= mask;
    if (Ref<Kind> value = findAttribute<Kind>(dictionary, attribute.key))
        store(std::move(value));
}

// An attribute that is kept as it is.
template <class Kind>
Ref<Kind> readAttribute(const Dictionary& dictionary, std::uint32_t& cached, const Attribute<Kind>& attribute,
    Ref<Kind>& stored) noexcept
{
    readAttribute(dictionary, cached, attribute, [&stored](Ref<Kind> value) { stored = std::move(value); });
    return stored;
}

} // namespace Libraries::Files::PDF
