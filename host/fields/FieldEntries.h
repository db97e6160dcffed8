#pragma once

#include <document/Document.h>
#include <values/Dictionary.h>

#include <array>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// What the standard lets a field inherit from those above it.
enum class Inherited : std::size_t {
    FieldType,
    Flags,
    Value,
    DefaultValue,
    DefaultAppearance,
    Quadding,
    MaxLength,
    Options,
    Count,
};

// The entries of a field, its own or those of the nearest field above that has them; a reference is
// followed. Null where there is none.
class FieldEntries {
public:
    const Ref<PDF::Value>& operator[](Inherited entry) const noexcept { return _values[std::size_t(entry)]; }
    template <class Kind>
    Ref<Kind> as(Inherited entry) const noexcept
    {
        return PDF::valueAs<Kind>((*this)[entry]);
    }
    void set(Inherited entry, Ref<PDF::Value> value) noexcept { _values[std::size_t(entry)] = std::move(value); }
    // Replaces what the dictionary of a field below has itself.
    void override(const PDF::Document& document, const PDF::Dictionary& own) noexcept;
    // Adds what is missing so far.
    void complete(const FieldEntries& others) noexcept;

private:
    std::array<Ref<PDF::Value>, std::size_t(Inherited::Count)> _values;
};

// The value itself or what it refers to, as `resolve` gives it, but null for the null value, which means the same
// as no entry.
Ref<PDF::Value> resolvePresent(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept;

} // namespace Host
