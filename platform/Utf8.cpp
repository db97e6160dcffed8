#include <platform/Utf8.h>

namespace {

constexpr char32_t highest = 0x10FFFF;
constexpr char32_t replacement = 0xFFFD;
constexpr unsigned bitsPerFollower = 6;

bool isSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

bool isFollower(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// The lengths of sequences: the first byte under a mask, and the lowest character that needs so many.
struct Form {
    unsigned char mask, lead;
    char32_t lowest;
};
constexpr Form forms[] = {{0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}};

} // namespace

void Utf8::append(std::string& out, char32_t c) noexcept
{
    if (c > highest || isSurrogate(c))
        c = replacement;
    std::size_t followers = std::size(forms) - 1;
    while (c < forms[followers].lowest)
        --followers;
    out += static_cast<char>(forms[followers].lead | c >> (followers * bitsPerFollower));
    while (followers-- > 0)
        out += static_cast<char>(0x80 | (c >> (followers * bitsPerFollower) & 0x3F));
}

bool Utf8::read(std::string_view& text, char32_t& c) noexcept
{
    const auto first = static_cast<unsigned char>(text[0]);
    std::size_t followers = 0;
    while (followers < std::size(forms) && (first & forms[followers].mask) != forms[followers].lead)
        ++followers;
    if (followers == std::size(forms) || text.size() <= followers)
        return false;
    c = first & static_cast<unsigned char>(~forms[followers].mask);
    for (std::size_t i = 1; i <= followers; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (!isFollower(byte))
            return false;
        c = c << bitsPerFollower | (byte & 0x3F);
    }
    if (c < forms[followers].lowest || c > highest || isSurrogate(c))
        return false;
    text.remove_prefix(followers + 1);
    return true;
}
