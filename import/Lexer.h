#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace Import {

// A reference as it is written: `12 0 R`.
struct Reference {
    int id;
    int generation;
};

// Takes a text apart from its front, without making values of it.
class Lexer {
public:
    explicit Lexer(std::string_view text) noexcept : _text(text) {}

    // How many bytes were taken.
    std::size_t place() const noexcept { return _place; }
    bool isAtEnd() const noexcept { return _place >= _text.size(); }

    // Goes behind white space and comments.
    void skipBlanks() noexcept;
    // The next token as it is written: a bracket, double angles being one, a string, a name with its solidus, or a
    // word. Empty at the end and, with the place behind it, for what is none.
    std::string_view token() noexcept;
    // The same, as a number and as a reference; none when it is anything else.
    std::optional<int> number() noexcept;
    std::optional<Reference> reference() noexcept;
    // Goes behind one value, brackets with all that is between them. It never takes less than libqpdf would: from
    // where it can't tell, it takes everything.
    void skipValue() noexcept;

private:
    bool skipLiteral() noexcept;
    bool skipHexadecimal() noexcept;

    std::string_view _text;
    std::size_t _place = 0;
};

} // namespace Import
