#include <host/fonts/PostScriptReader.h>

#include <host/base/Characters.h>

#include <algorithm>
#include <charconv>

namespace Host {

namespace {

bool isSpace(char c)
{
    return c == '\0' || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

bool isRegular(char c)
{
    constexpr std::string_view delimiters = "()<>[]{}/%";
    return !isSpace(c) && delimiters.find(c) == delimiters.npos;
}

} // namespace

long PostScriptPart::number(long otherwise) const noexcept
{
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return kind == Kind::Word && error == std::errc() && end == text.data() + text.size() ? value : otherwise;
}

PostScriptPart PostScriptReader::next() noexcept
{
    using Kind = PostScriptPart::Kind;
    skipSpace();
    if (isAtEnd())
        return {};
    const char c = _text[_position];
    if (isRegular(c))
        return {Kind::Word, takeRegular()};
    ++_position;
    if (c == '/')
        return {Kind::Name, takeRegular()};
    if (c == '(')
        return {Kind::String, takeLiteral()};
    const bool isDoubled = !isAtEnd() && _text[_position] == c;
    if (c == '<' && !isDoubled)
        return {Kind::String, takeHexadecimal()};
    if ((c == '<' || c == '>') && isDoubled)
        return {Kind::Mark, std::string(2, _text[_position++])};
    return {Kind::Mark, std::string(1, c)};
}

void PostScriptReader::skip(std::size_t count) noexcept
{
    _position = std::min(_text.size(), _position + std::min(count, _text.size()));
}

void PostScriptReader::skipSpace() noexcept
{
    bool isComment = false;
    for (; !isAtEnd(); ++_position) {
        const char c = _text[_position];
        if (c == '%')
            isComment = true;
        else if (c == '\n' || c == '\r')
            isComment = false;
        else if (!isComment && !isSpace(c))
            return;
    }
}

std::string PostScriptReader::takeRegular() noexcept
{
    const std::size_t begin = _position;
    while (!isAtEnd() && isRegular(_text[_position]))
        ++_position;
    return std::string(_text.substr(begin, _position - begin));
}

// From after the opening bracket. Escapes are left as they are: nothing that is looked for has any.
std::string PostScriptReader::takeLiteral() noexcept
{
    const std::size_t begin = _position;
    for (std::size_t depth = 1; !isAtEnd(); ++_position) {
        const char c = _text[_position];
        depth += c == '(';
        depth -= c == ')';
        if (depth == 0)
            return std::string(_text.substr(begin, _position++ - begin));
        if (c == '\\')
            skip(1);
    }
    return std::string(_text.substr(begin));
}

std::string PostScriptReader::takeHexadecimal() noexcept
{
    std::string bytes;
    int pending = -1;
    while (!isAtEnd()) {
        const char c = _text[_position++];
        if (c == '>')
            break;
        const int digit = hexDigit(static_cast<unsigned char>(c));
        if (digit < 0)
            continue;
        if (pending >= 0)
            bytes += static_cast<char>(pending * 16 + digit);
        pending = pending >= 0 ? -1 : digit;
    }
    if (pending >= 0)
        bytes += static_cast<char>(pending * 16);
    return bytes;
}

} // namespace Host
