#include <tools/Json.h>

#include <cstdio>

namespace Tools {

std::string json(std::string_view text)
{
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
        if (byte < 32 || byte == 127)
            out += escaped;
        else if (c == '"' || c == '\\')
            out.append({'\\', c});
        else
            out += c;
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
