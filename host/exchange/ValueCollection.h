#pragma once

#include <host/base/Utf8.h>
#include <host/exchange/FieldValues.h>
#include <platform/Limits.h>

#include <cstdint>
#include <optional>

namespace Host {

// The values of a file while it is read, each name once, and all together not much larger than the file.
class ValueCollection {
public:
    explicit ValueCollection(std::size_t fileSize) : _left(Limits::maxValueTexts(fileSize)) {}

    // The path of a field below another one; a refusal when it is too long.
    static Result<std::string> pathBelow(const std::string& above, const std::string& name)
    {
        std::string path = above.empty() ? name : name.empty() ? above : above + "." + name;
        if (path.size() > Limits::maxFieldPath)
            return Refusal{
                Reason::LimitReached, std::string(beginningOf(path, maxShown)) + "... is too long for a name"};
        return path;
    }
    // Adds a value; the reason when there is another one of this name.
    std::optional<Refusal> add(std::string path, FieldValue value)
    {
        const std::size_t size = costOf(path) + costOf(value);
        if (size > _left)
            return tooLarge();
        _left -= size;
        const auto [place, isNew] = _values.try_emplace(std::move(path), std::move(value));
        if (!isNew && place->second != value) // not moved from: it wasn't taken
            return Refusal{Reason::BrokenRule, place->first + " has two values"};
        return {};
    }
    static Refusal tooLarge()
    {
        return {Reason::LimitReached, "the values are too large for their file, which must repeat them"};
    }
    FieldValues take() { return std::move(_values); }

private:
    static constexpr std::size_t maxShown = 100;

    // Also an empty text takes memory.
    static std::size_t costOf(const std::string& text) { return sizeof text + text.size(); }
    static std::size_t costOf(const FieldValue& value)
    {
        std::size_t cost = 0;
        if (const auto* text = std::get_if<std::string>(&value))
            cost = text->size();
        else if (const auto* texts = std::get_if<FieldTexts>(&value))
            for (const std::string& each : *texts)
                cost += costOf(each);
        return cost;
    }

    FieldValues _values;
    std::size_t _left;
};

} // namespace Host
