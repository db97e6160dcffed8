#pragma once

#include <platform/Object.h>
#include <platform/String.h>

#include <concepts>
#include <string>

// A text builder. Numbers print in decimal, unless `hex` says otherwise for the next one.
class EXPORTED StringPrinter : public Object {
public:
    // An empty builder.
    static Ref<StringPrinter> create() noexcept { return make<StringPrinter>(); }

    // 8-bit text, one character per byte; a null text prints nothing.
    StringPrinter& print(const char* text) noexcept;
    StringPrinter& print(const String* text) noexcept;
    StringPrinter& print(const Ref<String>& text) noexcept { return print(text.get()); }
    // An address; in hexadecimal after `hex`.
    StringPrinter& print(const void* pointer) noexcept;
    template <std::integral Integer>
    StringPrinter& print(Integer number) noexcept
    {
        // A negative number reads in hexadecimal as the two's complement of 64 bits.
        printNumber(static_cast<unsigned long long>(number), std::signed_integral<Integer> && number < 0);
        return *this;
    }
    // The next number, and no other, is in hexadecimal, in capitals.
    StringPrinter& hex() noexcept;
    // The next number, and no other, has at least `digits` digits, filled with zeros.
    StringPrinter& width(std::size_t digits) noexcept;
    // Ends the line.
    virtual StringPrinter& endl() noexcept;

    // The text so far. The builder is empty afterwards.
    Ref<String> take() noexcept;

private:
    void printNumber(unsigned long long number, bool negative) noexcept;

    std::u32string _text;
    std::size_t _width = 0;
    bool _hex = false;
};
