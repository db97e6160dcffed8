#pragma once

#include <platform/Object.h>

#include <new>
#include <string>
#include <string_view>

// A text of 32-bit code points. One character of a file is one character of a string. Texts are
// immutable: every operation that changes one returns a new text, so a text may be shared freely,
// also between threads. Lengths and indices count code points.
class EXPORTED String final : public Object {
public:
    // As a length: up to the end.
    static constexpr std::size_t all = ~std::size_t(0);

    // The empty text.
    static Ref<String> create() noexcept;
    // From 8-bit text, one character per byte: `length` bytes from `start`, or up to the
    // terminating zero for `all`. A null pointer gives the empty text.
    static Ref<String> create(const char* text, std::size_t start = 0, std::size_t length = all) noexcept;
    // From 16-bit units. A pair of surrogates becomes one character; a lone one stays as it is.
    static Ref<String> create(const unsigned short* text, std::size_t start, std::size_t length) noexcept;
    // The text of one character.
    static Ref<String> create(unsigned int c) noexcept;
    // From code points.
    static Ref<String> create(std::u32string_view text) noexcept;

    // The characters from `start` on, at most `length` of them; the range is cut to the text.
    virtual Ref<String> substring(std::size_t start, std::size_t length) const noexcept;
    virtual Ref<String> substring(std::size_t start) const noexcept;
    // A new text with one more character at the end.
    virtual Ref<String> append(unsigned int c) const noexcept;
    virtual Ref<String> append(char c) const noexcept;
    // A new text with another one at its end; a null text adds nothing.
    virtual Ref<String> concat(const char* text) const noexcept;
    virtual Ref<String> concat(Ref<String> text) const noexcept;
    virtual std::size_t length() const noexcept;
    virtual bool isEmpty() const noexcept;
    // The index of the first occurrence at or after `from`; `length()` when there is none. A null
    // needle is never found, an empty one at `from`.
    virtual std::size_t find(Ref<String> needle, std::size_t from) const noexcept;
    virtual std::size_t find(unsigned int c, std::size_t from) const noexcept;
    // Exact comparison; false for null.
    virtual bool equals(const char* text) const noexcept;
    virtual bool equals(Ref<String> text) const noexcept;
    // The order of texts, by code point: `a` comes before `b` when `!a.greaterOrEqual(b)`. Every
    // text is greater than a null one.
    virtual bool greaterOrEqual(Ref<String> text) const noexcept;
    // The code point at `index`; 0 past the end.
    virtual unsigned int charAt(std::size_t index) const noexcept;
    // Code points into a buffer of the caller; returns how many there were to copy.
    virtual std::size_t copy(std::size_t start, std::size_t count, unsigned int* out) const noexcept;
    // A new array of the code points from `start` on, released with `Heap::free`.
    virtual unsigned int* toElements(std::size_t start) const noexcept;
    // A new array of 16-bit units, released with `Heap::free`, and their number. A character above
    // 0xFFFF gives a pair of surrogates.
    virtual unsigned short* toUtf16(std::size_t* length) const noexcept;

    // Whether the text has just these characters.
    bool equals(std::u32string_view text) const noexcept;
    // Negative, zero or positive as this text comes before, with or after the other.
    int compare(const String& other) const noexcept;
    // Walks the code points in order.
    template <class Visitor>
    void forEach(Visitor&& visit) const noexcept
    {
        for (std::size_t i = 0; i < _length; ++i)
            visit(at(i));
    }

    // Frees the characters along with the object.
    static void operator delete(String* string, std::destroying_delete_t) noexcept;

private:
    String(std::size_t length, bool wide) noexcept : _wide(wide), _length(length) {}
    struct TextBytes {
        std::size_t count;
    };
    [[gnu::returns_nonnull]] static void* operator new(std::size_t size, TextBytes text) noexcept;
    static void operator delete(void* memory, TextBytes text) noexcept;
    // A text without its characters, which the caller fills in.
    static Ref<String> allocate(std::size_t length, bool wide) noexcept;
    template <class Unit>
    [[gnu::visibility("hidden")]] static Ref<String> fromUnits(const Unit* units, std::size_t count) noexcept;

    // The characters follow the object: one byte each when all are below 256.
    const unsigned char* narrow() const noexcept { return reinterpret_cast<const unsigned char*>(this + 1); }
    const unsigned int* wide() const noexcept { return reinterpret_cast<const unsigned int*>(this + 1); }
    unsigned int at(std::size_t index) const noexcept { return _wide ? wide()[index] : narrow()[index]; }
    void copyTo(String& target, std::size_t targetIndex, std::size_t start, std::size_t count) const noexcept;

    const bool _wide; // first, where the count leaves room
    const std::size_t _length;
};
