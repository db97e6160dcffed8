#pragma once

#include <host/base/Refusal.h>

#include <utility>
#include <variant>

namespace Host {

// The outcome of an operation: a value, or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
public:
    // Of a value, or of the reason why there is none: `return` takes either.
    Result(T value) noexcept : _outcome(std::in_place_index<0>, std::move(value)) {}
    Result(Refusal refusal) noexcept : _outcome(std::in_place_index<1>, std::move(refusal)) {}

    // Whether there is a value.
    explicit operator bool() const noexcept { return _outcome.index() == 0; }
    // The value; only when there is one.
    T& operator*() noexcept { return *std::get_if<0>(&_outcome); }
    const T& operator*() const noexcept { return *std::get_if<0>(&_outcome); }
    T* operator->() noexcept { return std::get_if<0>(&_outcome); }
    const T* operator->() const noexcept { return std::get_if<0>(&_outcome); }
    // The reason; only when there is no value.
    const Refusal& refusal() const noexcept { return *std::get_if<1>(&_outcome); }

private:
    std::variant<T, Refusal> _outcome;
};

} // namespace Host
