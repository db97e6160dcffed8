#pragma once

#include <platform/Object.h>
#include <platform/String.h>

#include <charconv>
#include <concepts>
#include <vector>

// Collects the elements of a text that is to be written. Not a stream for others: what appends to it
// knows it, so that an element costs no call.
class MemOutStrm {
public:
    // In elements.
    std::size_t size() const noexcept { return _elements.size(); }
    std::uint32_t* data() noexcept { return _elements.data(); }
    void reserve(std::size_t more) noexcept { _elements.reserve(_elements.size() + more); }

    void append(char c) noexcept { _elements.push_back(static_cast<unsigned char>(c)); }
    void append(const char* text) noexcept
    {
        while (*text)
            append(*text++);
    }
    // In decimal.
    template <std::integral Integer>
    void appendNumber(Integer number) noexcept
    {
        char digits[24];
        const char* end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
        for (const char* digit = digits; digit != end; ++digit)
            append(*digit);
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
