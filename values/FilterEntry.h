#pragma once

#include <platform/ConstantText.h>
#include <values/Dictionary.h>
#include <values/Name.h>

namespace Libraries::Files::PDF {

// What the `Filter` of a stream's dictionary says. Those who ask differ on purpose in what they make of it.
struct FilterEntry {
    enum class Kind {
        None,      // there is no entry
        Flate,     // FlateDecode
        OtherName, // a name of which the library knows nothing, or one without text
        NoName,    // a value of another kind, as an array of filters is
    };

    static constexpr const char* flateName = "FlateDecode";
    static inline constinit const ConstantText key{"Filter"};

    Kind kind = Kind::None;
    Ref<Value> value; // as it is in the dictionary; null for `None`
    Ref<::String> name; // its text; null where it is no name or has none
};

// May leave `ErrNotAvailable`, which is no failure.
inline FilterEntry readFilterEntry(const Dictionary& dictionary) noexcept
{
    FilterEntry entry;
    entry.value = dictionary.find(FilterEntry::key);
    if (!entry.value)
        return entry;
    const Ref<Name> name = valueAs<Name>(entry.value);
    entry.kind = name ? FilterEntry::Kind::OtherName : FilterEntry::Kind::NoName;
    entry.name = name ? name->value() : nullptr;
    if (entry.name && entry.name->equals(FilterEntry::flateName))
        entry.kind = FilterEntry::Kind::Flate;
    return entry;
}

} // namespace Libraries::Files::PDF
