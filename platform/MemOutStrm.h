#pragma once

#include <platform/Heap.h>
#include <platform/Object.h>
#include <platform/String.h>

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <string_view>

// Collects the elements of a text that is to be written. Not a stream for others: what appends to it
// knows it, so that an element costs no call.
class MemOutStrm {
public:
    MemOutStrm() noexcept = default;
    MemOutStrm(const MemOutStrm&) = delete;
    MemOutStrm& operator=(const MemOutStrm&) = delete;
    ~MemOutStrm() noexcept { Heap::free(_elements, Heap::Array, nullptr, _capacity * sizeof(std::uint32_t)); }

    // Forgets the text and keeps the memory.
    void clear() noexcept { _size = 0; }
    // In elements.
    std::size_t size() const noexcept { return _size; }
    const std::uint32_t* data() const noexcept { return _elements; }
    void reserve(std::size_t more) noexcept
    {
        if (_capacity - _size < more)
            moveTo(std::max({_size + more, _size + _size / 2, std::size_t(256)}));
    }

    void append(char c) noexcept { *grow(1) = static_cast<unsigned char>(c); }
    void append(std::u32string_view text) noexcept { std::copy(text.begin(), text.end(), grow(text.size())); }
    void append(std::string_view text) noexcept { std::copy(text.begin(), text.end(), grow(text.size())); }
    // In decimal, with zeros in front up to `width` digits.
    template <std::integral Integer>
    void appendNumber(Integer number, std::size_t width = 0) noexcept
    {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
        const auto count = static_cast<std::size_t>(end - digits);
        const std::size_t zeros = width > count ? width - count : 0;
        std::uint32_t* const elements = grow(zeros + count);
        std::fill_n(elements, zeros, U'0');
        std::copy_n(digits, count, elements + zeros);
    }
    void append(const ::String& text) noexcept { text.copy(0, text.length(), grow(text.length())); }
    // `count` more elements, for the caller to fill.
    std::uint32_t* grow(std::size_t count) noexcept
    {
        reserve(count);
        _size += count;
        return _elements + _size - count;
    }

private:
    void moveTo(std::size_t capacity) noexcept
    {
        _elements = static_cast<std::uint32_t*>(
            Heap::resize(_elements, capacity * sizeof(std::uint32_t), Heap::Array, nullptr));
        _capacity = capacity;
    }

    std::uint32_t* _elements = nullptr;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
};
