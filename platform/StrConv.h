#pragma once

#include <platform/String.h>

// Numbers from text and back. No form sets a code. The last argument of `num` is there for a text of another alphabet
// of digits; the library passes null and so may you. No form touches its output on failure.
class EXPORTED StrConv {
public:
    // Decimal text to number; false when the text isn't wholly digits (no sign, no blank, not
    // empty), when the number is out of the type's range, or for null.
    static bool num(const Ref<String>& text, unsigned int* out, const Ref<String>& digits) noexcept;
    static bool num(const Ref<String>& text, unsigned long long* out, const Ref<String>& digits) noexcept;
    // The same, with one leading "-" or "+" taken. An empty text and a lone sign read as 0, so that
    // the halves of ".5", "5." and "-.5" are numbers.
    static bool num(const Ref<String>& text, long long* out, const Ref<String>& digits) noexcept;
    // The same for text that is no string yet.
    static bool num(std::u32string_view text, unsigned int* out) noexcept;
    static bool num(std::u32string_view text, unsigned long long* out) noexcept;
    static bool num(std::u32string_view text, long long* out) noexcept;
    // Digits of a base from 2 to 16; false in any other.
    static bool num(const Ref<String>& text, unsigned int* out, std::size_t base, const Ref<String>& digits) noexcept;

    // Number to decimal text.
    static Ref<String> str(int number) noexcept;
    static Ref<String> str(unsigned int number) noexcept;
    static Ref<String> str(long number) noexcept;
    static Ref<String> str(unsigned long number) noexcept;
    static Ref<String> str(long long number) noexcept;
    static Ref<String> str(unsigned long long number) noexcept;
    // In a base from 2 to 16, null in any other, with zeros in front up to `width` digits. A negative number prints as
    // the two's complement of the narrowest of 8, 16, 32 and 64 bits that holds it.
    static Ref<String> str(int number, std::size_t base, std::size_t width) noexcept;
    static Ref<String> str(unsigned long long number, std::size_t base, std::size_t width) noexcept;
};
