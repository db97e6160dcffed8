#include <tools/ShownText.h>

#include <host/base/Utf8.h>

#include <cstdio>

namespace Tools {

std::string shown(std::u32string_view text)
{
    std::string out;
    for (const char32_t& c : text) {
        const bool isControl = c < 32 || (c >= 127 && c < 160);
        char octal[8];
        std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned>(c));
        out += isControl ? octal : Host::toUtf8(std::u32string_view(&c, 1));
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
