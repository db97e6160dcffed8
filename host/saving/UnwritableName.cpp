#include <host/saving/UnwritableName.h>

#include <host/base/Characters.h>
#include <host/base/Keys.h>
#include <host/base/Utf8.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/Stream.h>

#include <cstdio>
#include <optional>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

bool isWritable(const Ref<::String>& name)
{
    constexpr std::u32string_view ends = U"%()/<>[]{}";
    bool isWritable = name && !name->isEmpty();
    if (name)
        name->forEach([&](char32_t c) {
            isWritable = isWritable && c > ' ' && ends.find(c) == ends.npos && byteOfElement(c) >= 0;
        });
    return isWritable;
}

std::optional<std::string> unlessWritable(const Ref<::String>& name)
{
    if (isWritable(name))
        return {};
    std::string shown;
    if (name)
        name->forEach([&shown](char32_t c) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "#%02X", static_cast<unsigned>(c));
            shown += c < ' ' || (c >= 127 && c < 160) ? escaped : toUtf8(std::u32string_view(&c, 1));
        });
    return shown;
}

std::optional<std::string> findIn(const Ref<Value>& value)
{
    if (const auto name = valueAs<Name>(value))
        return unlessWritable(name->value());
    if (const auto stream = valueAs<Stream>(value))
        return findIn(stream->dict());
    const auto array = valueAs<Array>(value);
    for (std::uint64_t i = 0; array && i < array->size(); ++i)
        if (auto name = findIn(array->get(i)))
            return name;
    const auto dictionary = valueAs<Dictionary>(value);
    for (const auto& key : dictionary ? keysOf(*dictionary) : std::vector<Ref<::String>>()) {
        if (auto name = unlessWritable(key))
            return name;
        if (auto name = findIn(dictionary->find(key)))
            return name;
    }
    return {};
}

} // namespace

std::string unwritableName(const Ref<Value>& value) noexcept
{
    const auto name = findIn(value);
    return name ? ": names are written as they are, and \"" + *name + "\" in it would not be one name" : "";
}

} // namespace Host
