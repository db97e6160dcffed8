#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Host {

// A reference as it is written: `12 0 R`.
struct Reference {
    int id;
    int generation;
};

// Takes a text apart from its front, by the rules of the format and without making values of it.
class Lexer {
public:
    explicit Lexer(std::string_view text) noexcept : _text(text) {}

    // How many bytes were taken.
    std::size_t place() const noexcept { return _place; }
    bool isAtEnd() const noexcept { return _place >= _text.size(); }

    // Skips white space and comments.
    void skipBlanks() noexcept;
    // The next token as it is written: a bracket, double angles being one, a string, a name with its solidus, or a
    // word. Empty at the end and, with the place after it, for what is none.
    std::string_view token() noexcept;
    // The same as a whole number, and the next three as a reference; none when they are anything else.
    template <class Number = int>
    std::optional<Number> number() noexcept;
    std::optional<Reference> reference() noexcept;
    // Skips one value, brackets with all that is between them. Where it can't tell the end of what is broken, it takes
    // everything.
    void skipValue() noexcept;

private:
    // What a character is, in bits.
    enum Kind : std::uint8_t { Space = 1, Bracket = 2, EndOfWord = 4, HexDigit = 8 };

    static constexpr std::array<std::uint8_t, 256> kinds = [] {
        std::array<std::uint8_t, 256> table{};
        const auto add = [&table](std::string_view characters, int bits) {
            for (const char c : characters)
                table[static_cast<unsigned char>(c)] = static_cast<std::uint8_t>(bits);
        };
        add({" \n\r\t\f\v\0", 7}, Space | EndOfWord);
        add("()<>[]{}", Bracket | EndOfWord);
        add("/%", EndOfWord);
        add("0123456789ABCDEFabcdef", HexDigit);
        return table;
    }();

    static bool is(char c, int bits) noexcept { return (kinds[static_cast<unsigned char>(c)] & bits) != 0; }
    bool skipLiteral() noexcept;
    bool skipHexadecimal() noexcept;

    std::string_view _text;
    std::size_t _place = 0;
};

inline void Lexer::skipBlanks() noexcept
{
    while (!isAtEnd() && (is(_text[_place], Space) || _text[_place] == '%')) {
        if (_text[_place] == '%')
            _place = std::min(_text.find_first_of("\r\n", _place), _text.size());
        else
            ++_place;
    }
}

inline std::string_view Lexer::token() noexcept
{
    skipBlanks();
    if (isAtEnd())
        return {};
    const std::size_t start = _place;
    const char c = _text[_place++];
    const bool isDoubled = (c == '<' || c == '>') && !isAtEnd() && _text[_place] == c;
    bool isToken = true;
    if (isDoubled)
        ++_place;
    else if (c == '(')
        isToken = skipLiteral();
    else if (c == '<')
        isToken = skipHexadecimal();
    else if (is(c, Bracket))
        isToken = c == '[' || c == ']';
    else
        while (!isAtEnd() && !is(_text[_place], EndOfWord))
            ++_place;
    return isToken ? _text.substr(start, _place - start) : std::string_view();
}

template <class Number>
std::optional<Number> Lexer::number() noexcept
{
    const std::string_view digits = token();
    Number number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}

inline std::optional<Reference> Lexer::reference() noexcept
{
    const std::optional<int> id = number();
    const std::optional<int> generation = number();
    if (!id || !generation || token() != "R")
        return std::nullopt;
    return Reference{*id, *generation};
}

inline void Lexer::skipValue() noexcept
{
    std::string open; // brackets, a "<" for two
    do {
        const std::string_view found = token();
        const bool isOpening = found == "[" || found == "<<";
        const char opener = isOpening ? found[0] : found == "]" ? '[' : found == ">>" ? '<' : '\0';
        const bool isClosing = opener && !isOpening;
        if (found.empty() || (isClosing && (open.empty() || open.back() != opener))) {
            _place = _text.size();
            return;
        }
        if (isOpening)
            open += opener;
        else if (isClosing)
            open.pop_back();
    } while (!open.empty());
}

// Starts after the bracket.
inline bool Lexer::skipLiteral() noexcept
{
    for (std::size_t depth = 1; !isAtEnd();) {
        const char c = _text[_place++];
        depth += c == '(' ? 1 : 0;
        depth -= c == ')' ? 1 : 0;
        _place += c == '\\' ? 1 : 0;
        if (depth == 0)
            return true;
    }
    _place = _text.size();
    return false;
}

// Starts after the bracket.
inline bool Lexer::skipHexadecimal() noexcept
{
    const std::size_t end = _text.find('>', _place);
    if (end == _text.npos)
        return false;
    const std::string_view digits = _text.substr(_place, end - _place);
    _place = end + 1;
    return std::all_of(digits.begin(), digits.end(), [](char c) { return is(c, Space | HexDigit); });
}

} // namespace Host
