#include <host/exchange/FdfText.h>

#include <host/base/Characters.h>
#include <host/base/Lexer.h>
#include <platform/Limits.h>

#include <algorithm>
#include <limits>

namespace Host {

namespace {

Refusal unpairedAt(std::size_t place)
{
    return {Reason::BrokenRule, "byte " + std::to_string(place) + ": a bracket without its partner"};
}

bool isOpening(std::string_view token)
{
    return token == "[" || token == "<<";
}

bool isCount(std::string_view token)
{
    return !token.empty() && token.size() <= Limits::maxDigits
        && std::all_of(token.begin(), token.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::uint64_t countOf(std::string_view token)
{
    return Lexer(token).number<std::uint64_t>().value_or(0);
}

} // namespace

Result<FdfText> FdfText::read(std::string_view file) noexcept
{
    if (file.size() >= std::numeric_limits<std::uint32_t>::max())
        return Refusal{Reason::LimitReached, "the file is too large"};
    FdfText text(file);
    if (auto refusal = text.readTokens())
        return *refusal;
    text.findObjects();
    return text;
}

std::optional<Refusal> FdfText::readTokens() noexcept
{
    std::vector<std::uint32_t> open; // brackets
    std::size_t base = 0;            // of the lexer, which starts anew after the data of a stream
    for (Lexer lexer(_file);;) {
        lexer.skipBlanks();
        if (lexer.isAtEnd())
            break;
        const std::size_t begin = base + lexer.place();
        const std::string_view token = lexer.token();
        if (token.empty())
            return unpairedAt(begin);
        const auto index = static_cast<std::uint32_t>(_tokens.size());
        _tokens.push_back({std::uint32_t(begin), std::uint32_t(token.size()), index + 1});
        if (isOpening(token)) {
            open.push_back(index);
        } else if (token == "]" || token == ">>") {
            if (open.empty() || (at(open.back()) == "[") != (token == "]"))
                return unpairedAt(begin);
            _tokens[open.back()].next = index + 1;
            open.pop_back();
        } else if (token == "stream" && open.empty() && at(index - 1) == ">>") {
            base = std::min(_file.find("endstream", begin), _file.size());
            lexer = Lexer(_file.substr(base));
        }
    }
    return open.empty() ? std::nullopt : std::optional(unpairedAt(_tokens[open.back()].begin));
}

void FdfText::findObjects() noexcept
{
    for (std::uint32_t i = 1; i < _tokens.size(); i = _tokens[i].next) {
        const std::uint32_t value = i + 1;
        if (value == _tokens.size())
            return;
        if (at(i) == "trailer" && at(value) == "<<")
            _trailer = value;
        else if (at(i) == "obj" && i > 2 && isCount(at(i - 1)) && isCount(at(i - 2)))
            _objects[countOf(at(i - 2))] = value;
    }
}

std::string_view FdfText::at(std::uint32_t index) const noexcept
{
    return index < _tokens.size() ? _file.substr(_tokens[index].begin, _tokens[index].size) : std::string_view();
}

bool FdfText::isReference(std::uint32_t index) const noexcept
{
    return at(index + 2) == "R" && isCount(at(index)) && isCount(at(index + 1));
}

std::uint32_t FdfText::after(std::uint32_t index) const noexcept
{
    return isReference(index) ? index + 3 : _tokens[index].next;
}

std::uint32_t FdfText::follow(std::uint32_t index) const noexcept
{
    for (int i = 0; i < Limits::maxReferenceChain; ++i) {
        if (!isReference(index))
            return index;
        const auto found = _objects.find(countOf(at(index)));
        if (found == _objects.end())
            return none;
        index = found->second;
    }
    return none;
}

std::uint32_t FdfText::find(std::uint32_t dictionary, std::string_view key) const noexcept
{
    std::uint32_t found = none;
    if (at(dictionary) != "<<")
        return none;
    for (std::uint32_t i = dictionary + 1; at(i) != ">>";) {
        const std::string_view name = at(i);
        const std::uint32_t value = i + 1;
        if (!name.starts_with('/') || at(value) == ">>") { // no entry: it goes on with the next name
            i = after(i);
            continue;
        }
        if (isSameName(name.substr(1), key))
            found = value;
        i = after(value);
    }
    found = follow(found);
    return at(found) == "null" ? none : found;
}

std::vector<std::uint32_t> FdfText::elements(std::uint32_t array) const noexcept
{
    std::vector<std::uint32_t> result;
    if (at(array) == "[")
        for (std::uint32_t i = array + 1; at(i) != "]"; i = after(i))
            result.push_back(follow(i));
    return result;
}

} // namespace Host
