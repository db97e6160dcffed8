#include <tools/FieldValues.h>

#include <host/base/ErrorWords.h>
#include <host/exchange/Fdf.h>
#include <platform/Limits.h>
#include <tools/Json.h>
#include <tools/JsonInput.h>
#include <tools/ValueRows.h>
#include <tools/Xfdf.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace Tools {

namespace {

constexpr Option options[] = {
    {"--values-format", "json|fdf|xfdf|csv", "what --values FILE is, whatever its name and its first characters say"},
    separatorOption,
    {"--skip-unknown", "", "pass over values for fields that the form doesn't have or that take none, with a warning"},
};

constexpr std::pair<std::string_view, ValueFormat> formats[] = {
    {"json", ValueFormat::Json}, {"fdf", ValueFormat::Fdf}, {"xfdf", ValueFormat::Xfdf}, {"csv", ValueFormat::Csv}};

Host::Result<std::string> readFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "r"), &std::fclose);
    if (!file)
        return Host::systemRefusal(Host::Reason::Unreadable, "can't be opened", errno);
    std::string text;
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
        text.append(block, count);
        if (text.size() > Limits::maxValuesFile)
            return Host::Refusal{Host::Reason::LimitReached,
                "is larger than " + std::to_string(Limits::maxValuesFile >> 20) + " MiB"};
    }
    if (std::ferror(file.get()))
        return Host::systemRefusal(Host::Reason::Unreadable, "can't be read", errno);
    return text;
}

// What the first characters are those of.
std::optional<ValueFormat> formatOf(std::string_view text)
{
    constexpr std::string_view leading = " \t\r\n\xEF\xBB\xBF\xFE\xFF"; // byte order marks, and UTF-16's zeros
    const std::size_t first = text.find_first_not_of(std::string(leading) + '\0');
    const std::string_view rest = text.substr(std::min(first, text.size()));
    if (rest.starts_with("%FDF"))
        return ValueFormat::Fdf;
    if (rest.starts_with("<"))
        return ValueFormat::Xfdf;
    return rest.starts_with("{") ? std::optional(ValueFormat::Json) : std::nullopt;
}

Host::Result<FieldValues> readJsonValues(std::string_view text)
{
    const auto object = readJson(text, Digits::All);
    return object ? valuesOf(*object) : object.refusal();
}

// Of a file of one row.
Host::Result<FieldValues> readCsvValues(const std::string& text, char separator)
{
    auto rows = ValueRows::create(sourceOf(text), separator);
    if (!rows)
        return rows.refusal();
    const auto row = rows->next();
    if (!row)
        return row.refusal();
    if (row->empty())
        return Host::Refusal{Host::Reason::Missing, "has no row of values"};
    const auto second = rows->next();
    if (!second)
        return second.refusal();
    if (!second->empty())
        return Host::Refusal{Host::Reason::WrongArgument,
            "has several rows of values; files-pdf-batch --csv fills a form for each"};
    return rows->valuesOf(*row);
}

std::string writeJson(const Host::FormFields& form)
{
    std::string out = "{";
    for (const Host::FormField* field : Host::fieldsWithValues(form)) {
        out += std::string(out == "{" ? "" : ",") + "\n  " + json(field->path) + ": ";
        out += field->value ? jsonOfTexts(*field->value) : "null";
    }
    return out + "\n}\n";
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
            values.emplace(name, element.get<bool>());
        else if (element.is_string())
            values.emplace(name, element.get<std::string>());
        else if (element.is_array() && std::all_of(element.begin(), element.end(), isText))
            values.emplace(name, element.get<std::vector<std::string>>());
        else if (!element.is_null())
            return Host::Refusal{Host::Reason::WrongArgument,
                "the value of " + name + " is not a text, a number, true, false, null or a list of texts"};
    return values;
}

std::optional<ValueFormat> formatCalled(std::string_view name)
{
    for (const auto& [known, format] : formats)
        if (name == known)
            return format;
    return {};
}

Host::Result<std::string> writeValues(const Host::FormFields& form, ValueFormat format, char separator)
{
    switch (format) {
    case ValueFormat::Json:
        return writeJson(form);
    case ValueFormat::Fdf:
        return Host::writeFdf(form);
    case ValueFormat::Xfdf:
        return writeXfdf(form);
    case ValueFormat::Csv:
        break;
    }
    return writeRow(form, separator);
}

OptionGroup valueOptions()
{
    return {"values", options};
}

char separatorOf(const CommandLine& line)
{
    const std::string name = line.argument("--separator", "comma");
    return name == "comma" ? ',' : name == "semicolon" ? ';' : '\t';
}

Host::Result<FieldValues> readValues(const std::string& path, const CommandLine& line)
{
    const auto text = readFile(path);
    if (!text)
        return text.refusal();
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
        [](char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); });
    auto format = formatCalled(extension.empty() ? "" : std::string_view(extension).substr(1));
    if (!format)
        format = formatOf(*text);
    if (line.has("--values-format"))
        format = formatCalled(line.argument("--values-format"));
    Host::Result<FieldValues> values = Host::Refusal{Host::Reason::Unreadable,
        "is neither JSON nor FDF nor XFDF; --values-format says what it is"};
    if (format == ValueFormat::Json)
        values = readJsonValues(*text);
    else if (format == ValueFormat::Fdf)
        values = Host::readFdf(*text);
    else if (format == ValueFormat::Xfdf)
        values = readXfdf(*text);
    else if (format == ValueFormat::Csv)
        values = readCsvValues(*text, separatorOf(line));
    if (!values)
        return Host::Refusal{Host::Reason::Unreadable, values.refusal().message};
    return values;
}

} // namespace Tools
