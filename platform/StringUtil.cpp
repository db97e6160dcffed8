#include <platform/StringUtil.h>

#include <algorithm>

Ref<TVector<Ref<String>>> StringUtil::split(const Ref<String>& text, unsigned int separator, std::size_t limit) noexcept
{
    if (!text)
        return nullptr;
    std::vector<Ref<String>> pieces;
    for (std::size_t start = 0; start < text->length();) {
        const bool isLast = limit != 0 && pieces.size() + 1 == limit;
        const std::size_t end = isLast ? text->length() : text->find(separator, start);
        if (end > start)
            pieces.push_back(text->substring(start, end - start));
        start = end + 1;
    }
    return make<TVector<Ref<String>>>(std::move(pieces));
}

std::size_t StringUtil::split(
    std::u32string_view text, char32_t separator, std::span<std::u32string_view> pieces) noexcept
{
    std::size_t count = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        if (end > start && count++ < pieces.size())
            pieces[count - 1] = text.substr(start, end - start);
        start = end + 1;
    }
    return count;
}

Ref<String> StringUtil::trim(const Ref<String>& text) noexcept
{
    if (!text)
        return nullptr;
    std::size_t start = 0;
    std::size_t end = text->length();
    while (start < end && text->charAt(start) <= ' ')
        ++start;
    while (end > start && text->charAt(end - 1) <= ' ')
        --end;
    return text->substring(start, end - start);
}
