#include <host/pages/ContentBalance.h>

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace Host {

namespace {

bool isBlank(int c)
{
    return c == 0 || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

bool isDelimiter(int c)
{
    return c == '(' || c == ')' || c == '<' || c == '>' || c == '[' || c == ']' || c == '{' || c == '}' || c == '/'
        || c == '%';
}

// Reads operators one by one; operands are passed over.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> content) noexcept
        : _text(reinterpret_cast<const char*>(content.data()), content.size())
    {
    }

    // The next operator, or a bracket of an array or dictionary; empty at the end.
    std::string_view next() noexcept
    {
        while (_at < _text.size()) {
            const std::size_t start = _at;
            const char c = _text[_at++];
            if (isBlank(std::uint8_t(c)))
                continue;
            if (c == '%')
                skipTo("\r\n");
            else if (c == '(')
                skipString();
            else if (c == '/')
                skipWord();
            else if (c == '<' && _at < _text.size() && _text[_at] == '<')
                return _text.substr(start, (++_at, 2));
            else if (c == '>' && _at < _text.size() && _text[_at] == '>')
                return _text.substr(start, (++_at, 2));
            else if (c == '<')
                _isCut = !skipTo(">") || _isCut;
            else if (c == '[' || c == ']')
                return _text.substr(start, 1);
            else if (!isDelimiter(std::uint8_t(c))) {
                skipWord();
                if (!isOperand(_text.substr(start, _at - start)))
                    return _text.substr(start, _at - start);
            }
        }
        return {};
    }
    // Passes over the data of an inline image, after its ID, to the end of its EI; false when there is none.
    bool skipImageData() noexcept
    {
        for (std::size_t end = _text.find("EI", _at + 1); end != _text.npos; end = _text.find("EI", end + 1)) {
            const bool isWord = isBlank(std::uint8_t(_text[end - 1]))
                && (end + 2 == _text.size() || isBlank(std::uint8_t(_text[end + 2])));
            if (isWord && looksLikeContent(end + 2)) {
                _at = end + 2;
                return true;
            }
        }
        _at = _text.size();
        return false;
    }
    // Whether the content ended inside a string.
    bool isCut() const noexcept { return _isCut; }

private:
    static bool isOperand(std::string_view word) noexcept
    {
        return word.find_first_not_of("0123456789+-.") == word.npos || word == "true" || word == "false"
            || word == "null";
    }
    // Data may have the letters EI, too, but hardly with text after them.
    bool looksLikeContent(std::size_t at) const noexcept
    {
        constexpr std::size_t enough = 16;
        for (const char c : _text.substr(at, enough))
            if (const auto byte = std::uint8_t(c); !isBlank(byte) && (byte < ' ' || byte > '~'))
                return false;
        return true;
    }
    // To the first of these characters and after it; false when there is none.
    bool skipTo(const char* ends) noexcept
    {
        const std::size_t end = _text.find_first_of(ends, _at);
        _at = end == _text.npos ? _text.size() : end + 1;
        return end != _text.npos;
    }
    void skipWord() noexcept
    {
        while (_at < _text.size() && !isBlank(std::uint8_t(_text[_at])) && !isDelimiter(std::uint8_t(_text[_at])))
            ++_at;
    }
    void skipString() noexcept
    {
        std::size_t depth = 1;
        for (; _at < _text.size() && depth > 0; ++_at) {
            if (_text[_at] == '\\')
                ++_at;
            else if (_text[_at] == '(')
                ++depth;
            else if (_text[_at] == ')')
                --depth;
        }
        _at = std::min(_at, _text.size());
        _isCut = _isCut || depth > 0;
    }

    const std::string_view _text;
    std::size_t _at = 0;
    bool _isCut = false;
};

bool isOneOf(std::string_view word, std::initializer_list<const char*> words)
{
    for (const char* each : words)
        if (word == each)
            return true;
    return false;
}

// What is open while operators go by.
struct OpenParts {
    std::ptrdiff_t states = 0;
    std::ptrdiff_t marks = 0;
    std::ptrdiff_t brackets = 0;
    bool isText = false;
    bool isPath = false;

    // False for an operator that closes what is not open.
    bool take(std::string_view word) noexcept
    {
        if (word == "q")
            ++states;
        else if (word == "Q")
            --states;
        else if (word == "BT" || word == "ET") {
            const bool wasText = isText;
            isText = word == "BT";
            return wasText != isText;
        } else if (word == "BMC" || word == "BDC")
            ++marks;
        else if (word == "EMC")
            --marks;
        else if (word == "[" || word == "<<")
            ++brackets;
        else if (word == "]" || word == ">>")
            --brackets;
        else if (isOneOf(word, {"m", "l", "c", "v", "y", "re", "h"}))
            isPath = true;
        else if (isOneOf(word, {"S", "s", "f", "F", "f*", "B", "B*", "b", "b*", "n"}))
            isPath = false;
        return states >= 0 && marks >= 0 && brackets >= 0;
    }
};

} // namespace

ContentBalance balanceOf(std::span<const std::uint8_t> content) noexcept
{
    Reader reader(content);
    OpenParts open;
    for (std::string_view word = reader.next(); !word.empty(); word = reader.next())
        if (!open.take(word) || (word == "ID" && !reader.skipImageData()))
            return {true, 0};
    const bool isBroken = open.isText || open.isPath || open.marks > 0 || open.brackets > 0 || reader.isCut();
    return {isBroken, std::size_t(open.states)};
}

} // namespace Host
