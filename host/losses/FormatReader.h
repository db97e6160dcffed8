#pragma once

#include <host/losses/SourceText.h>

#include <string>
#include <vector>

namespace Host {

// A value as the PDF format means it, which is not always how the library reads it.
struct FormatValue {
    enum class Kind { Null, Boolean, Number, Name, String, Reference, Array, Dictionary, Nothing };

    Kind kind = Kind::Nothing;
    std::uint64_t begin = 0; // its place in the text
    std::uint64_t end = 0;
    // A word that a bracket follows at once, which the library's reader joins with what follows, or a list that has
    // such a word in it.
    bool isGlued = false;
    // Equal when scalars mean the same: the digits of a number without those that say nothing, the bytes of a
    // string, a name as it is written, "12 0" of a reference.
    std::string text;
    // The elements of an array; of a dictionary keys and values in turn, in the order of the text.
    std::vector<FormatValue> parts;

    // Whether it is this name, however that is written: "/Pr#65v" is Prev.
    bool isName(std::string_view name) const noexcept;
    // The value under a key of a dictionary, the last one of several; null when there is none, or the null value,
    // which means the same.
    const FormatValue* find(std::string_view key) const noexcept;
    // A number that is whole, not negative and has at most 18 digits.
    bool isCount() const noexcept;
    // The number for which that holds.
    std::uint64_t count() const noexcept { return std::stoull(text); }
};

// Reads a text by the rules of the PDF format, independently of the library's parser. What is not a value reads as
// `Nothing`, and the reader goes on after it: no text stops it, and it always moves on before the end. Values nest as
// deep as the library allows.
class FormatReader {
public:
    // The text must outlive the reader, and have been moved to `position` or before it.
    FormatReader(SourceText& text, std::uint64_t position) noexcept : _text(text), _position(position) {}

    // The value that follows, references included.
    FormatValue readValue() noexcept;
    // Skips white space and comments.
    void skipSpace() noexcept;
    // Whether a character separates words.
    static bool isSpace(int c) noexcept;
    // Whether it can be part of a word or a name.
    static bool isRegular(int c) noexcept;
    // Skips these, and the keyword; false, with the keyword not skipped, when something else follows.
    bool skipKeyword(std::string_view keyword) noexcept;
    // The whole number that follows, not negative; false, with the reader where it was, when something else follows.
    bool readCount(std::uint64_t& number) noexcept;
    // The single letter that follows, as at the end of a table's row.
    bool readLetter(char& letter) noexcept;

    std::uint64_t position() const noexcept { return _position; }
    // The comments skipped so far, each from its "%" to the end of its line.
    struct Range {
        std::uint64_t begin;
        std::uint64_t end;
    };
    std::vector<Range> takeComments() noexcept { return std::move(_comments); }

private:
    // Skips characters, and doesn't have all of many held.
    template <class Condition>
    void skipWhile(Condition condition) noexcept;
    int here() noexcept { return _text.at(_position); }
    FormatValue readPart() noexcept;
    void readList(FormatValue& list, std::string_view end) noexcept;
    void readDictionary(FormatValue& dictionary) noexcept;
    void readName(FormatValue& name) noexcept;
    void readLiteral(FormatValue& string) noexcept;
    void readEscape(FormatValue& string) noexcept;
    void readHexadecimal(FormatValue& string) noexcept;
    void readWord(FormatValue& word) noexcept;
    bool readReferenceTail(FormatValue& id) noexcept;
    std::string takeRegular() noexcept;

    SourceText& _text;
    std::uint64_t _position;
    unsigned _depth = 0; // of the lists that are being read
    std::vector<Range> _comments;
};

} // namespace Host
