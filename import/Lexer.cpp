#include <import/Lexer.h>

#include <algorithm>
#include <charconv>
#include <string>

namespace Import {

namespace {

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\v' || c == '\0';
}

bool isBracket(char c)
{
    return std::string_view("()<>[]{}").find(c) != std::string_view::npos;
}

bool endsWord(char c)
{
    return isSpace(c) || isBracket(c) || c == '/' || c == '%';
}

} // namespace

void Lexer::skipBlanks() noexcept
{
    while (!isAtEnd() && (isSpace(_text[_place]) || _text[_place] == '%')) {
        if (_text[_place] == '%')
            _place = std::min(_text.find_first_of("\r\n", _place), _text.size());
        else
            ++_place;
    }
}

std::string_view Lexer::token() noexcept
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
    else if (isBracket(c))
        isToken = c == '[' || c == ']';
    else
        while (!isAtEnd() && !endsWord(_text[_place]))
            ++_place;
    return isToken ? _text.substr(start, _place - start) : std::string_view();
}

std::optional<int> Lexer::number() noexcept
{
    const std::string_view digits = token();
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}

std::optional<Reference> Lexer::reference() noexcept
{
    const std::optional<int> id = number();
    const std::optional<int> generation = number();
    if (!id || !generation || token() != "R")
        return std::nullopt;
    return Reference{*id, *generation};
}

void Lexer::skipValue() noexcept
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

// Starts behind the bracket.
bool Lexer::skipLiteral() noexcept
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

// Starts behind the bracket.
bool Lexer::skipHexadecimal() noexcept
{
    const std::size_t end = _text.find('>', _place);
    if (end == _text.npos)
        return false;
    const std::string_view digits = _text.substr(_place, end - _place);
    _place = end + 1;
    return std::all_of(digits.begin(), digits.end(), [](char c) {
        return isSpace(c) || std::string_view("0123456789ABCDEFabcdef").find(c) != std::string_view::npos;
    });
}

} // namespace Import
