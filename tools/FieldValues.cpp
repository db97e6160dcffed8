#include <tools/FieldValues.h>

#include <host/base/ErrorWords.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace Tools {

namespace {

Host::Result<std::string> readFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "r"), &std::fclose);
    if (!file)
        return Host::systemRefusal(Host::Reason::Unreadable, "can't be opened", errno);
    std::string text;
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get()))
        text.append(block, count);
    if (std::ferror(file.get()))
        return Host::systemRefusal(Host::Reason::Unreadable, "can't be read", errno);
    return text;
}

} // namespace

Host::Result<FieldValues> valuesOf(const nlohmann::json& object)
{
    if (!object.is_object())
        return Host::Refusal{Host::Reason::WrongArgument, "is not a JSON object"};
    const auto isText = [](const nlohmann::json& element) { return element.is_string(); };
    FieldValues values;
    for (const auto& [name, element] : object.items())
        if (element.is_boolean())
            values.emplace_back(name, element.get<bool>());
        else if (element.is_string())
            values.emplace_back(name, element.get<std::string>());
        else if (element.is_array() && std::all_of(element.begin(), element.end(), isText))
            values.emplace_back(name, element.get<std::vector<std::string>>());
        else
            return Host::Refusal{Host::Reason::WrongArgument,
                "the value of " + name + " is not a text, true, false or a list of texts"};
    return values;
}

Host::Result<FieldValues> readValues(const std::string& path)
{
    const auto text = readFile(path);
    if (!text)
        return text.refusal();
    auto values = valuesOf(nlohmann::json::parse(*text, nullptr, false));
    if (!values)
        return Host::Refusal{Host::Reason::Unreadable, values.refusal().message};
    return values;
}

} // namespace Tools
