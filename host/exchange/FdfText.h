#pragma once

#include <host/base/Result.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Host {

// An FDF file as its tokens, in which values are found by the index of their first one. It takes 12 bytes for each
// token, which has at least two bytes of the file with what separates it. The file must outlive it.
class FdfText {
public:
    // Nothing is before the first token, so that its index is free to mean no value.
    static constexpr std::uint32_t none = 0;

    // Refused: brackets that don't match, what is no token, and 4 GiB.
    static Result<FdfText> read(std::string_view file) noexcept;

    // The token as it is written, of a string with its brackets.
    std::string_view at(std::uint32_t index) const noexcept;
    // What comes after the value, a reference included; an opening bracket is one value with all in it.
    std::uint32_t after(std::uint32_t index) const noexcept;
    // The value itself or what it refers to; `none` when that leads nowhere.
    std::uint32_t follow(std::uint32_t index) const noexcept;
    // The value under a key of a dictionary, the last of several, with its reference followed; `none` when there is no
    // such key, or null under it, and in any other value.
    std::uint32_t find(std::uint32_t dictionary, std::string_view key) const noexcept;
    // The elements of an array, references followed; none of any other value.
    std::vector<std::uint32_t> elements(std::uint32_t array) const noexcept;
    // The last dictionary after the word `trailer`.
    std::uint32_t trailer() const noexcept { return _trailer; }

private:
    struct Token {
        std::uint32_t begin;
        std::uint32_t size;
        std::uint32_t next; // after what this one opens
    };

    explicit FdfText(std::string_view file) noexcept : _file(file), _tokens{{0, 0, 1}} {}
    std::optional<Refusal> readTokens() noexcept;
    void findObjects() noexcept;
    bool isReference(std::uint32_t index) const noexcept;

    std::string_view _file;
    std::vector<Token> _tokens; // the first stands for no value
    std::unordered_map<std::uint64_t, std::uint32_t> _objects; // by number
    std::uint32_t _trailer = none;
};

} // namespace Host
