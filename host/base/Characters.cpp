#include <host/base/Characters.h>

namespace Host {

int hexDigit(int c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const int letter = c | 0x20;
    return c > 0 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

bool isSameName(std::string_view written, std::string_view name) noexcept
{
    std::size_t length = 0;
    for (std::size_t i = 0; i < written.size(); ++i, ++length) {
        int c = static_cast<unsigned char>(written[i]);
        const bool isEscape = c == '#' && i + 2 < written.size() && hexDigit(written[i + 1]) >= 0
            && hexDigit(written[i + 2]) >= 0;
        if (isEscape) {
            c = hexDigit(written[i + 1]) * 16 + hexDigit(written[i + 2]);
            i += 2;
        }
        if (length >= name.size() || static_cast<unsigned char>(name[length]) != c)
            return false;
    }
    return length == name.size();
}

} // namespace Host
