#pragma once

#include <platform/Object.h>

#include <vector>

// A counted list that belongs to whoever holds it.
template <class T>
class TVector final : public Object {
public:
    TVector() noexcept = default;
    // Of these elements.
    explicit TVector(std::vector<T> elements) noexcept : _elements(std::move(elements)) {}

    // The number of elements.
    std::size_t size() const noexcept { return _elements.size(); }
    // The element at `index`; a null one when the index is out of range.
    T get(std::size_t index) const noexcept { return index < _elements.size() ? _elements[index] : T(); }

    // For loops over the elements.
    auto begin() const noexcept { return _elements.begin(); }
    auto end() const noexcept { return _elements.end(); }

private:
    std::vector<T> _elements;
};

// A vector that is returned by value; empty means size zero.
template <class T>
using StackVector = std::vector<T>;
