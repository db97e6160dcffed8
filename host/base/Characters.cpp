#include <host/base/Characters.h>

namespace Host {

int hexDigit(int c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const int letter = c | 0x20;
    return c > 0 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

namespace {

// Takes the next character off a name, which isn't empty, as it is written: "#" and two digits are one.
char takeCharacter(std::string_view& written)
{
    const bool isEscape =
        written.size() > 2 && written[0] == '#' && hexDigit(written[1]) >= 0 && hexDigit(written[2]) >= 0;
    const int c = isEscape ? hexDigit(written[1]) * 16 + hexDigit(written[2]) : written[0];
    written.remove_prefix(isEscape ? 3 : 1);
    return static_cast<char>(c);
}

} // namespace

std::string decodedName(std::string_view written) noexcept
{
    std::string name;
    while (!written.empty())
        name += takeCharacter(written);
    return name;
}

bool isSameName(std::string_view written, std::string_view name) noexcept
{
    for (const char c : name)
        if (written.empty() || takeCharacter(written) != c)
            return false;
    return written.empty();
}

} // namespace Host
