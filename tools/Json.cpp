#include <tools/Json.h>

#include <platform/Utf8.h>
#include <tools/ShownText.h>

#include <cstdio>

namespace Tools {

namespace {

// As one unit of UTF-16, or as two.
void appendEscaped(std::string& out, unsigned c)
{
    char escaped[16];
    if (c > 0xFFFF)
        std::snprintf(escaped, sizeof escaped, "\\u%04x\\u%04x", 0xD7C0 + (c >> 10), 0xDC00 + (c & 0x3FF));
    else
        std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
    out += escaped;
}

} // namespace

std::string json(std::string_view text)
{
    std::string out = "\"";
    while (!text.empty()) {
        const std::string_view rest = text;
        char32_t c = 0;
        if (!Utf8::read(text, c)) {
            text = rest.substr(1);
            out += rest[0];
        } else if (isObeyed(c)) {
            appendEscaped(out, c);
        } else {
            if (c == '"' || c == '\\')
                out += '\\';
            out += rest.substr(0, rest.size() - text.size());
        }
    }
    return out + '"';
}

std::string jsonOfTexts(const std::vector<std::string>& texts)
{
    if (texts.size() == 1)
        return json(texts.front());
    std::string out = "[";
    for (const std::string& text : texts)
        out += (out.size() == 1 ? "" : ", ") + json(text);
    return out + "]";
}

} // namespace Tools
