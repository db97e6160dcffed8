#include <tools/ShownText.h>

#include <host/base/Utf8.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace Tools {

bool isObeyed(char32_t c)
{
    static constexpr struct {
        char32_t first, last;
    } ranges[] = {{0, 0x1F}, {0x7F, 0x9F}, {0x61C, 0x61C}, {0x180E, 0x180E}, {0x200B, 0x200B}, {0x200E, 0x200F},
        {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};
    return std::any_of(std::begin(ranges), std::end(ranges),
        [c](const auto& range) { return c >= range.first && c <= range.last; });
}

std::string shown(std::u32string_view text)
{
    std::string out;
    for (const char32_t& c : text) {
        char spelled[16];
        std::snprintf(spelled, sizeof spelled, c < 256 ? "\\%03o" : "\\u{%X}", static_cast<unsigned>(c));
        out += isObeyed(c) ? spelled : Host::toUtf8(std::u32string_view(&c, 1));
    }
    return out;
}

std::string shown(const std::string& text)
{
    const Ref<::String> read = Host::fromUtf8(text);
    std::u32string characters;
    (read ? read : ::String::create(text.c_str()))->forEach([&characters](char32_t c) { characters += c; });
    return shown(characters);
}

} // namespace Tools
