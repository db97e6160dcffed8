#pragma once

#include <string>
#include <string_view>

namespace Host {

// A part of a PostScript text.
struct PostScriptPart {
    enum class Kind {
        End,
        Word,   // an operator, or a number
        Name,   // its text without the solidus
        String, // its bytes, of either form
        Mark,   // a bracket or a brace
    };
    Kind kind = Kind::End;
    std::string text;

    bool isWord(std::string_view word) const noexcept { return kind == Kind::Word && text == word; }
    bool isMark(std::string_view mark) const noexcept { return kind == Kind::Mark && text == mark; }
    // A whole number; `otherwise` when it is none.
    long number(long otherwise) const noexcept;
};

// Reads a PostScript text, as CMaps and Type 1 programs are, part by part. No text stops it, and each part takes at
// least a byte.
class PostScriptReader {
public:
    // The text must outlive the reader.
    explicit PostScriptReader(std::string_view text) noexcept : _text(text) {}

    PostScriptPart next() noexcept;
    // Where the next part is looked for, in bytes.
    std::size_t position() const noexcept { return _position; }
    // Passes bytes that are no text; up to the end at most.
    void skip(std::size_t count) noexcept;

private:
    bool isAtEnd() const noexcept { return _position >= _text.size(); }
    void skipSpace() noexcept;
    std::string takeRegular() noexcept;
    std::string takeLiteral() noexcept;
    std::string takeHexadecimal() noexcept;

    std::string_view _text;
    std::size_t _position = 0;
};

} // namespace Host
