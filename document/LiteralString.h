#pragma once

#include <values/ValueObj.h>

#include <array>
#include <string>

namespace Libraries::Files::PDF {

// After the bracket that closes, for the format, the literal string that the characters begin with; `npos` of a text
// when none does.
template <class Character>
std::size_t endOfLiteral(const Character* characters, std::size_t count) noexcept
{
    std::uint64_t depth = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (characters[i] == '\\')
            ++i;
        else if (characters[i] == '(')
            ++depth;
        else if (characters[i] == ')' && --depth == 0)
            return i + 1;
    }
    return std::u32string_view::npos;
}

// A literal string while it is read, from after its "(". One object serves for many, for the sake of its memory.
class LiteralString {
public:
    enum class Step {
        More,
        End,       // the ")" that closes it was taken
        LineEnd,   // one without a backslash before it, which is refused
        BadEscape, // a character that stands for nothing after a backslash
    };

    // Begins another one.
    void begin() noexcept;
    Step take(std::uint32_t c) noexcept
    {
        if (_isPending || c >= plain.size() || !plain[c])
            return takeSpecial(c);
        _text += char32_t(c);
        return Step::More;
    }

    // The string, once it has ended. It keeps what it is written with if the format means other bytes by that.
    Ref<ValueObj> finish() const noexcept;
    // Where its end is to the format.
    enum class End {
        AsMeant,
        Elsewhere, // before, with other values after it, all of them inside
        Open,      // after, or that of one of these values
    };
    End end() const noexcept;

private:
    // Whether a character stands for itself where nothing is pending.
    static const std::array<bool, 256> plain;

    Step takeSpecial(std::uint32_t c) noexcept;
    Step read(std::uint32_t c) noexcept;
    Step readEscaped(std::uint32_t c) noexcept;
    void endOctal() noexcept;

    std::u32string _text;
    std::u32string _source;     // what it is written with, up to the last character that isn't plain
    std::size_t _plainFrom = 0; // where in the text the plain characters after that begin
    std::uint64_t _depth = 0;   // of brackets
    unsigned _octal = 0;        // the value of the digits of an escape that are pending
    unsigned _digits = 0;       // how many these are
    bool _isEscape = false;
    bool _isAfterCarriageReturn = false; // of a line continuation
    bool _isPending = false;             // one of the last three
    bool _isOtherwise = false;           // the format means other bytes
    bool _hasDoubled = false;            // two backslashes in a row
};

} // namespace Libraries::Files::PDF
