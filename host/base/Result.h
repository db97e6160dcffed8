#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace Host {

// Why something could not be done, for people.
struct Refusal {
    // What is wrong in one line of UTF-8, without the name of the file and without the code.
    std::string message;
    // The library's code behind it; 0 when there is none.
    std::uint32_t code = 0;
    // The file itself is no use: it could not be read, so that nothing is known about what is in it, or nothing
    // can be written at its place.
    bool isUnusable = false;
};

// What an operation gives: a value, or the reason why there is none.
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
