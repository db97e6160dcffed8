#include <host/losses/FormatReader.h>

#include <host/base/Characters.h>
#include <platform/Limits.h>

#include <algorithm>

namespace Host {

namespace {

using Kind = FormatValue::Kind;

bool isLineEnd(int c)
{
    return c == '\r' || c == '\n';
}

bool opensBracket(int c)
{
    return c == '(' || c == '[' || c == '<';
}

bool isDigit(int c)
{
    return c >= '0' && c <= '9';
}

bool isOctalDigit(int c)
{
    return c >= '0' && c <= '7';
}

// The character that one after a backslash represents; most represent themselves.
int escaped(int c)
{
    switch (c) {
    case 'b': return '\b';
    case 'f': return '\f';
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    default: return c;
    }
}

// Makes a number of a word, if it is one. A sign or a point alone is 0, as in most readers.
bool makeNumber(FormatValue& word)
{
    const bool hasSign = word.text[0] == '-' || word.text[0] == '+';
    const bool isNegative = word.text[0] == '-';
    const std::string unsignedText = word.text.substr(hasSign);
    const std::size_t point = std::min(unsignedText.find('.'), unsignedText.size());
    std::string whole = unsignedText.substr(0, point);
    std::string fraction = point < unsignedText.size() ? unsignedText.substr(point + 1) : "";
    if (!std::all_of(whole.begin(), whole.end(), isDigit) || !std::all_of(fraction.begin(), fraction.end(), isDigit))
        return false;
    whole.erase(0, whole.find_first_not_of('0'));
    fraction.erase(fraction.find_last_not_of('0') + 1);
    const bool isZero = whole.empty() && fraction.empty();
    word.kind = Kind::Number;
    word.text = (isNegative && !isZero ? "-" : "") + (whole.empty() ? "0" : whole)
        + (fraction.empty() ? "" : "." + fraction);
    return true;
}

// Makes a reference of the last two parts of a list, whose last word was "R".
bool makeReference(std::vector<FormatValue>& parts, const FormatValue& word)
{
    const std::size_t count = parts.size();
    if (count < 2 || !parts[count - 1].isCount() || !parts[count - 2].isCount())
        return false;
    FormatValue& id = parts[count - 2];
    id.text += " " + parts[count - 1].text;
    id.kind = Kind::Reference;
    id.end = word.end;
    parts.pop_back();
    return true;
}

} // namespace

bool FormatValue::isName(std::string_view name) const noexcept
{
    return kind == Kind::Name && isSameName(text, name);
}

const FormatValue* FormatValue::find(std::string_view key) const noexcept
{
    const FormatValue* found = nullptr;
    for (std::size_t i = 0; kind == Kind::Dictionary && i < parts.size(); i += 2)
        if (parts[i].isName(key))
            found = &parts[i + 1];
    return found && found->kind != Kind::Null ? found : nullptr;
}

bool FormatValue::isCount() const noexcept
{
    return kind == Kind::Number && text.size() <= Limits::maxDigits && std::all_of(text.begin(), text.end(), isDigit);
}

FormatValue FormatReader::readValue() noexcept
{
    FormatValue value = readPart();
    if (value.isCount())
        readReferenceTail(value);
    return value;
}

bool FormatReader::isSpace(int c) noexcept
{
    return c == 0 || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

bool FormatReader::isRegular(int c) noexcept
{
    constexpr std::string_view delimiters = "()<>[]{}/%";
    return c != SourceText::end && !isSpace(c) && delimiters.find(static_cast<char>(c)) == delimiters.npos;
}

void FormatReader::skipSpace() noexcept
{
    for (;;) {
        skipWhile(isSpace);
        if (here() != '%')
            return;
        const std::uint64_t begin = _position;
        skipWhile([](int c) { return c != SourceText::end && !isLineEnd(c); });
        _comments.push_back({begin, _position});
    }
}

template <class Condition>
void FormatReader::skipWhile(Condition condition) noexcept
{
    constexpr std::uint64_t mostHeld = 1 << 16;
    std::uint64_t begin = _position;
    for (; condition(here()); ++_position)
        if (_position - begin == mostHeld) {
            _text.skip(begin, _position);
            begin = _position;
        }
}

bool FormatReader::skipKeyword(std::string_view keyword) noexcept
{
    skipSpace();
    if (!_text.isAt(_position, keyword))
        return false;
    _position += keyword.size();
    return true;
}

bool FormatReader::readCount(std::uint64_t& number) noexcept
{
    const std::uint64_t start = _position;
    const std::size_t commentCount = _comments.size();
    skipSpace();
    std::uint64_t value = 0;
    int digits = 0;
    const bool isThere = isDigit(here());
    for (; isDigit(here()) && digits < Limits::maxDigits; ++_position) {
        value = value * 10 + static_cast<unsigned>(here() - '0');
        digits += value != 0;
    }
    if (!isThere || isRegular(here())) {
        _position = start;
        _comments.resize(commentCount);
        return false;
    }
    number = value;
    return true;
}

bool FormatReader::readLetter(char& letter) noexcept
{
    skipSpace();
    if (!isRegular(here()))
        return false;
    letter = static_cast<char>(here());
    ++_position;
    return !isRegular(here());
}

// After the number of an object: makes it a reference if its generation and "R" follow.
bool FormatReader::readReferenceTail(FormatValue& id) noexcept
{
    const std::uint64_t start = _position;
    const std::size_t commentCount = _comments.size();
    std::uint64_t generation = 0;
    if (readCount(generation) && skipKeyword("R") && !isRegular(here())) {
        id.kind = Kind::Reference;
        id.text += " " + std::to_string(generation);
        id.end = _position;
        return true;
    }
    _position = start;
    _comments.resize(commentCount);
    return false;
}

// One value, or one word of a reference.
FormatValue FormatReader::readPart() noexcept
{
    skipSpace();
    FormatValue part;
    part.begin = _position;
    const int c = here();
    if (c == '/') {
        readName(part);
    } else if (c == '(') {
        readLiteral(part);
    } else if (c == '[') {
        ++_position;
        part.kind = Kind::Array;
        readList(part, "]");
    } else if (_text.isAt(_position, "<<")) {
        _position += 2;
        readDictionary(part);
    } else if (c == '<') {
        readHexadecimal(part);
    } else if (isRegular(c)) {
        readWord(part);
    } else if (c != SourceText::end) {
        ++_position;
    }
    part.end = _position;
    return part;
}

// Starts after the opening bracket, and ends after `end` or at the end of the text.
void FormatReader::readList(FormatValue& list, std::string_view end) noexcept
{
    if (_depth >= Limits::maxNesting) {
        list.kind = Kind::Nothing;
        return;
    }
    ++_depth;
    for (skipSpace(); here() != SourceText::end && !_text.isAt(_position, end); skipSpace()) {
        FormatValue part = readPart();
        const bool isWord = part.kind != Kind::Array && part.kind != Kind::Dictionary;
        list.isGlued = list.isGlued || (isWord && part.isGlued);
        if (part.text != "R" || part.kind != Kind::Nothing || !makeReference(list.parts, part))
            list.parts.push_back(std::move(part));
    }
    --_depth;
    if (here() == SourceText::end)
        list.kind = Kind::Nothing;
    else
        _position += end.size();
}

void FormatReader::readDictionary(FormatValue& dictionary) noexcept
{
    dictionary.kind = Kind::Dictionary;
    readList(dictionary, ">>");
    const std::vector<FormatValue>& parts = dictionary.parts;
    bool isGood = parts.size() % 2 == 0;
    for (std::size_t i = 0; i < parts.size(); i += 2)
        isGood = isGood && parts[i].kind == Kind::Name;
    if (!isGood)
        dictionary.kind = Kind::Nothing;
}

void FormatReader::readName(FormatValue& name) noexcept
{
    ++_position;
    name.kind = Kind::Name;
    name.text = takeRegular();
}

void FormatReader::readWord(FormatValue& word) noexcept
{
    word.text = takeRegular();
    word.isGlued = opensBracket(here());
    if (word.text == "true" || word.text == "false")
        word.kind = Kind::Boolean;
    else if (word.text == "null")
        word.kind = Kind::Null;
    else
        makeNumber(word);
}

std::string FormatReader::takeRegular() noexcept
{
    std::string text;
    for (; isRegular(here()); ++_position)
        text += static_cast<char>(here());
    return text;
}

void FormatReader::readLiteral(FormatValue& string) noexcept
{
    string.kind = Kind::String;
    ++_position;
    for (std::uint64_t depth = 0;; ++_position) {
        const int c = here();
        if (c == SourceText::end) {
            string.kind = Kind::Nothing;
            return;
        }
        if (c == ')' && depth-- == 0)
            break;
        depth += c == '(';
        if (c == '\\') {
            readEscape(string);
        } else if (c == '\r') {
            string.text += '\n'; // every line ending means this one
            _position += _text.at(_position + 1) == '\n';
        } else {
            string.text += static_cast<char>(c);
        }
    }
    ++_position;
}

// Starts at the backslash, ends at the last character of the escape.
void FormatReader::readEscape(FormatValue& string) noexcept
{
    const int c = _text.at(++_position);
    if (isOctalDigit(c)) {
        int value = c - '0';
        for (int digits = 1; digits < 3 && isOctalDigit(_text.at(_position + 1)); ++digits)
            value = value * 8 + _text.at(++_position) - '0';
        string.text += static_cast<char>(value & 0xFF);
    } else if (c == '\r') {
        _position += _text.at(_position + 1) == '\n'; // the line goes on
    } else if (c != '\n' && c != SourceText::end) {
        string.text += static_cast<char>(escaped(c));
    }
    if (c == SourceText::end)
        --_position;
}

void FormatReader::readHexadecimal(FormatValue& string) noexcept
{
    string.kind = Kind::String;
    int pending = -1;
    for (++_position; here() != '>'; ++_position) {
        if (here() == SourceText::end) {
            string.kind = Kind::Nothing;
            return;
        }
        const int digit = hexDigit(here());
        if (digit < 0)
            continue;
        if (pending >= 0)
            string.text += static_cast<char>(pending * 16 + digit);
        pending = pending >= 0 ? -1 : digit;
    }
    ++_position;
    if (pending >= 0)
        string.text += static_cast<char>(pending * 16);
}

} // namespace Host
