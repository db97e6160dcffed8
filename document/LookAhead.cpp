#include <document/LookAhead.h>

#include <document/Syntax.h>

namespace Libraries::Files::PDF {

// The next element that is neither white space nor in a comment; 0 at the end.
std::uint32_t LookAhead::next() noexcept
{
    bool isComment = false;
    for (std::uint32_t c = 0; _left != 0 && _elements.next(c);) {
        --_left;
        if (isComment)
            isComment = !Syntax::isLineEnd(c);
        else if (c == '%')
            isComment = true;
        else if (!Syntax::isStandardSpace(c))
            return c;
    }
    return 0;
}

bool LookAhead::pass(std::string_view keyword) noexcept
{
    std::uint32_t c = next();
    std::size_t i = 0;
    while (i < keyword.size() && c == static_cast<unsigned char>(keyword[i]))
        if (++i < keyword.size() && !_elements.next(c))
            return false;
    return i == keyword.size();
}

// Gives what comes after the number, white space and comments left out.
bool LookAhead::passNumber(std::uint32_t& c, int maxDigits) noexcept
{
    c = next();
    int digits = 0;
    for (; digits < maxDigits && c >= '0' && c <= '9'; ++digits)
        if (!_elements.next(c))
            return false;
    if (Syntax::isSpace(c))
        c = next();
    return digits != 0;
}

bool LookAhead::passReferenceEnd() noexcept
{
    constexpr int maxDigits = 5;
    std::uint32_t c = 0;
    return passNumber(c, maxDigits) && c == 'R';
}

bool LookAhead::passObjectStart() noexcept
{
    constexpr int maxDigits = 10;
    std::uint32_t c = 0;
    if (!passNumber(c, maxDigits) || !_elements.seek(_elements.tell() - 1) || !passNumber(c, maxDigits))
        return false;
    return c == 'o' && _elements.seek(_elements.tell() - 1) && pass("obj");
}

} // namespace Libraries::Files::PDF
