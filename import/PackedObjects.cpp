#include <import/PackedObjects.h>

#include <algorithm>

namespace Import {

PackedObjects::PackedObjects(std::string_view data, std::size_t count, std::size_t first) : _data(data)
{
    Lexer list(data);
    for (std::size_t i = 0; i < count; ++i) {
        const std::optional<int> id = list.number();
        const std::optional<int> offset = list.number();
        if (!id || !offset || *offset < 0)
            break;
        _starts.push_back(first + static_cast<std::size_t>(*offset));
        _members.push_back({*id, _starts.back()});
    }
    std::sort(_starts.begin(), _starts.end());
    const auto isSame = [](const Member& a, const Member& b) { return a.id == b.id; };
    std::reverse(_members.begin(), _members.end()); // so that the last of the same id comes first
    std::stable_sort(_members.begin(), _members.end(), [](const Member& a, const Member& b) { return a.id < b.id; });
    _members.erase(std::unique(_members.begin(), _members.end(), isSame), _members.end());
}

PackedObjects::Text PackedObjects::textOf(const Member& member) const
{
    const std::size_t start = std::min(member.offset, _data.size());
    const auto next = std::upper_bound(_starts.begin(), _starts.end(), member.offset);
    const std::size_t end = next == _starts.end() ? _data.size() : std::clamp(*next, start, _data.size());
    const std::size_t room = end - start;
    Lexer value(_data.substr(start));
    value.skipValue();
    Text text{value.place(), false, std::nullopt};
    if (text.length > room)
        return text;
    Lexer rest(_data.substr(start + text.length, room - text.length));
    rest.skipBlanks();
    text.isWhole = rest.isAtEnd();
    text.length += rest.place();
    if (text.isWhole)
        return text;
    Lexer words(_data.substr(start, room));
    text.reference = words.reference();
    words.skipBlanks();
    if (!words.isAtEnd())
        text.reference.reset();
    text.length = std::max(text.length, words.place());
    return text;
}

} // namespace Import
