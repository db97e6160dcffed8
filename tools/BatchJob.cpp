#include <tools/BatchJob.h>

#include <tools/JsonInput.h>

#include <algorithm>

namespace Tools {

namespace {

Host::Refusal wrongJob(std::string message)
{
    return {Host::Reason::WrongArgument, std::move(message)};
}

// The text under a key, which is the name of a file; empty when there is no such key. A zero would cut the name
// short.
Host::Result<std::string> fileNameUnder(const nlohmann::json& object, const char* key)
{
    const auto found = object.find(key);
    if (found == object.end())
        return std::string();
    const auto* name = found->get_ptr<const std::string*>();
    if (!name || name->empty() || name->find('\0') != name->npos)
        return wrongJob(std::string(key) + " is not a file name");
    return *name;
}

// A misspelt key must not leave out a step.
std::optional<Host::Refusal> unknownKeyOf(const nlohmann::json& object, std::vector<std::string> known)
{
    for (const auto& item : object.items())
        if (std::find(known.begin(), known.end(), item.key()) == known.end())
            return wrongJob("unknown key " + item.key());
    return {};
}

// A key of a background besides `file`: what the option of its name says. One without an argument is true or false.
std::optional<Host::Refusal> readPlacement(const std::string& key, const nlohmann::json& value, PagesAsked& asked)
{
    const Option* const option = placementOption(key);
    if (!option)
        return wrongJob("unknown key " + key);
    const bool takesText = *option->argument != '\0';
    if (takesText ? !value.is_string() : !value.is_boolean())
        return wrongJob("the " + key + " of a background is " + (takesText ? "no text" : "neither true nor false"));
    if (!takesText && !value.get<bool>())
        return {};
    return ask(asked, key, takesText ? value.get<std::string>() : std::string());
}

// `background` is the name of a file, or an object of `file` and what the options of the program say.
std::optional<Host::Refusal> readBackground(const nlohmann::json& object, BatchJob& job)
{
    const auto found = object.find("background");
    if (found == object.end())
        return {};
    const bool isObject = found->is_object();
    const auto foreign = isObject ? fileNameUnder(*found, "file") : fileNameUnder(object, "background");
    if (!foreign || foreign->empty())
        return wrongJob("background names no file");
    job.foreign = *foreign;
    if (!isObject)
        return {};
    for (const auto& item : found->items())
        if (item.key() != "file")
            if (auto refusal = readPlacement(item.key(), item.value(), job.pages))
                return refusal;
    return {};
}

// `flatten` is true or false, or a list of names of fields.
std::optional<Host::Refusal> readFlattened(const nlohmann::json& object, BatchJob& job)
{
    const auto found = object.find("flatten");
    if (found == object.end())
        return {};
    const bool isList = found->is_array()
        && std::all_of(found->begin(), found->end(), [](const auto& name) { return name.is_string(); });
    if (!isList && !found->is_boolean())
        return wrongJob("flatten is neither true or false nor a list of names");
    if (isList)
        job.flattened = found->get<std::vector<std::string>>();
    else if (found->get<bool>())
        job.flattened = Host::AllFields();
    return {};
}

std::optional<Host::Refusal> readTarget(const nlohmann::json& object, BatchJob& job)
{
    const auto found = object.find("recompress");
    if (found == object.end())
        return {};
    if (*found != "flate" && *found != "none")
        return wrongJob("recompress is flate or none");
    job.target = *found == "flate" ? Host::PDF::Compression::Flate : Host::PDF::Compression::None;
    return {};
}

} // namespace

std::optional<Host::Refusal> readJob(std::string_view line, BatchJob& job)
{
    const auto read = readJson(line, Digits::UnderFill);
    if (!read)
        return read.refusal();
    const nlohmann::json& object = *read;
    if (const auto id = object.find("id"); id != object.end()) {
        if (!id->is_string() && !id->is_number())
            return wrongJob("id is neither a text nor a number");
        job.id = *id;
    }
    if (auto refusal = unknownKeyOf(object, {"id", "in", "fill", "flatten", "background", "recompress", "out"}))
        return refusal;
    for (const auto& [key, name] : {std::pair("in", &job.in), std::pair("out", &job.out)}) {
        auto file = fileNameUnder(object, key);
        if (!file)
            return file.refusal();
        *name = std::move(*file);
    }
    if (job.in.empty())
        return wrongJob("the job has no \"in\"");
    if (object.contains("fill")) {
        auto values = valuesOf(object["fill"]);
        if (!values)
            return values.refusal().withPrefix("fill: ");
        job.values = std::move(*values);
    }
    if (auto refusal = readFlattened(object, job))
        return refusal;
    if (auto refusal = readBackground(object, job))
        return refusal;
    return readTarget(object, job);
}

} // namespace Tools
