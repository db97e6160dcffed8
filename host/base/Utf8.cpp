#include <host/base/Utf8.h>

#include <platform/Reporter.h>
#include <platform/Utf8.h>

namespace Host {

Ref<::String> fromUtf8(std::string_view text) noexcept
{
    std::u32string characters;
    characters.reserve(text.size());
    while (!text.empty()) {
        char32_t c = 0;
        if (!Utf8::read(text, c))
            return refuse(ErrInvalidArgument);
        characters += c;
    }
    return ::String::create(characters);
}

std::string toUtf8(const Ref<::String>& text) noexcept
{
    std::string out;
    if (text)
        text->forEach([&out](char32_t c) { Utf8::append(out, c); });
    return out;
}

std::string toUtf8(std::u32string_view text) noexcept
{
    std::string out;
    for (const char32_t c : text)
        Utf8::append(out, c);
    return out;
}

} // namespace Host
