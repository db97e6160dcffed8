#pragma once

#include <platform/Object.h>
#include <platform/String.h>

#include <charconv>
#include <concepts>
#include <string_view>
#include <vector>

// Collects the elements of a text that is to be written. Not a stream for others: what appends to it
// knows it, so that an element costs no call.
class MemOutStrm {
public:
    // Forgets the text and keeps the memory.
    void clear() noexcept { _elements.clear(); }
    // In elements.
    std::size_t size() const noexcept { return _elements.size(); }
    std::uint32_t* data() noexcept { return _elements.data(); }
    void reserve(std::size_t more) noexcept { _elements.reserve(_elements.size() + more); }

    void append(char c) noexcept { _elements.push_back(static_cast<unsigned char>(c)); }
    void append(std::u32string_view text) noexcept { _elements.insert(_elements.end(), text.begin(), text.end()); }
    void append(std::string_view text) noexcept { _elements.insert(_elements.end(), text.begin(), text.end()); }
    // In decimal, with zeros in front up to `width` digits.
    template <std::integral Integer>
    void appendNumber(Integer number, std::size_t width = 0) noexcept
    {
        char digits[24];
        const auto count = static_cast<std::size_t>(std::to_chars(digits, digits + sizeof(digits), number).ptr - digits);
        _elements.insert(_elements.end(), width > count ? width - count : 0, U'0');
        _elements.insert(_elements.end(), digits, digits + count);
    }
    void append(const ::String& text) noexcept { text.copy(0, text.length(), grow(text.length())); }
    // `count` more elements, for the caller to fill.
    std::uint32_t* grow(std::size_t count) noexcept
    {
        _elements.resize(_elements.size() + count);
        return _elements.data() + _elements.size() - count;
    }

private:
    std::vector<std::uint32_t> _elements;
};
