#include <document/LiteralString.h>

#include <document/Syntax.h>
#include <values/StringObj.h>

#include <vector>

namespace Libraries::Files::PDF {

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;

constexpr unsigned maxOctalDigits = 3;

bool isOctalDigit(std::uint32_t c)
{
    return c >= '0' && c <= '7';
}

// What a character stands for after a backslash; 0 when it stands for nothing.
char32_t escaped(std::uint32_t c)
{
    switch (c) {
    case '(': case ')': return char32_t(c);
    case 'b': return Syntax::backspace;
    case 'f': return Syntax::formFeed;
    case 'n': return Syntax::lineFeed;
    case 'r': return Syntax::carriageReturn;
    case 't': return Syntax::tab;
    default: return 0;
    }
}

constexpr std::array<bool, 256> plainCharacters()
{
    std::array<bool, 256> result{};
    for (std::uint32_t c = 0; c < result.size(); ++c)
        result[c] = c != '(' && c != ')' && c != '\\' && !Syntax::isLineEnd(c) && !Syntax::isMapped(c);
    return result;
}

// The bytes that a file has for the characters; null when there are none for one of them.
Ref<TConstArray<std::uint8_t>> bytesOf(std::u32string_view characters)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(characters.size());
    for (const char32_t c : characters) {
        if (!Windows_1252::hasByte(c))
            return nullptr;
        bytes.push_back(Windows_1252::toByte(c));
    }
    return TConstArray<std::uint8_t>::create(bytes.data(), bytes.size());
}

} // namespace

constinit const std::array<bool, 256> LiteralString::plain = plainCharacters();

void LiteralString::begin() noexcept
{
    _text.clear();
    _source = U'(';
    _plainFrom = 0;
    _depth = 0;
    _digits = 0;
    _isEscape = _isAfterCarriageReturn = _isPending = _isOtherwise = _hasDoubled = false;
}

LiteralString::Step LiteralString::takeSpecial(std::uint32_t c) noexcept
{
    if (c == ')' && _depth == 0 && !_isPending && !_isOtherwise)
        return Step::End; // most strings: their source isn't asked for
    _source.append(_text, _plainFrom);
    _source += char32_t(c);
    const Step step = read(c);
    _plainFrom = _text.size();
    _isPending = _isEscape || _isAfterCarriageReturn || _digits != 0;
    return step;
}

LiteralString::Step LiteralString::read(std::uint32_t c) noexcept
{
    if (Syntax::isLineEnd(c)) {
        if (!_isEscape && !(c == Syntax::lineFeed && _isAfterCarriageReturn))
            return Step::LineEnd;
        _isAfterCarriageReturn = c == Syntax::carriageReturn;
        _isEscape = false;
        return Step::More;
    }
    _isAfterCarriageReturn = false;
    if (_digits != 0 && _digits < maxOctalDigits && isOctalDigit(c)) {
        _octal = _octal << 3 | (c - '0');
        ++_digits;
        return Step::More;
    }
    endOctal();
    if (c == '\\') {
        // Deliberate: the second of two is lost, and what follows it is still escaped.
        _hasDoubled = _hasDoubled || _isEscape;
        _isOtherwise = _isOtherwise || _isEscape;
        _isEscape = true;
        return Step::More;
    }
    if (_isEscape)
        return readEscaped(c);
    if (c == ')' && _depth == 0)
        return Step::End;
    _depth += c == '(' ? 1 : 0;
    _depth -= c == ')' ? 1 : 0;
    // Deliberate: of a character its low 8 bits count. So bytes from 128 to 159, which stand for
    // characters above, don't come back as they were; their octal forms do.
    _text += char32_t(Syntax::characterOfByte(c & 0xFF));
    _isOtherwise = _isOtherwise || c > 0xFF || Syntax::isMapped(c);
    return Step::More;
}

LiteralString::Step LiteralString::readEscaped(std::uint32_t c) noexcept
{
    _isEscape = false;
    if (isOctalDigit(c)) {
        _octal = c - '0';
        _digits = 1;
        return Step::More;
    }
    const char32_t character = escaped(c);
    if (character == 0)
        return Step::BadEscape;
    _text += character;
    return Step::More;
}

// Adds the character of the pending digits, of which the low 8 bits count.
void LiteralString::endOctal() noexcept
{
    if (_digits == 0)
        return;
    const std::uint32_t byte = _octal & 0xFF;
    const std::uint32_t character = Syntax::characterOfByte(byte);
    _text += char32_t(character);
    _isOtherwise = _isOtherwise || (byte != 0 && character == 0);
    _digits = 0;
}

Ref<ValueObj> LiteralString::finish() const noexcept
{
    Ref<::String> text = ::String::create(_text);
    Ref<TConstArray<std::uint8_t>> source = _isOtherwise ? bytesOf(_source) : nullptr;
    if (!source)
        return make<StringObj>(std::move(text));
    return make<StringObj>(std::move(text), std::move(source));
}

LiteralString::End LiteralString::end() const noexcept
{
    if (!_hasDoubled)
        return End::AsMeant;
    std::u32string_view rest = _source;
    for (End result = End::AsMeant;; result = End::Elsewhere) {
        const std::size_t end = endOfLiteral(rest.data(), rest.size());
        if (end >= rest.size())
            return end == rest.size() ? result : End::Open;
        rest.remove_prefix(end);
        const std::size_t next = rest.find_first_of(U"(%");
        if (next == rest.npos)
            return End::Elsewhere;
        if (rest[next] == '%')
            return End::Open;
        rest.remove_prefix(next);
    }
}

} // namespace Libraries::Files::PDF
