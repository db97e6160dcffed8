#include <tools/Filling.h>

#include <platform/Limits.h>
#include <text/Loader.h>
#include <tools/Opening.h>

#include <algorithm>

namespace Tools {

namespace {

constexpr Option options[] = {
    {"--flatten", "", "then make all fields a part of their pages, as files-pdf-flatten does"},
    {"--viewer-looks", "", "ask viewers to draw the new values, instead of drawing them"},
    {"--keep-looks", "", "neither draw the new values nor ask viewers to"},
    {"--keep-xfa", "", "leave a form in XFA beside the fields, which keeps the old values"},
    {"--check-required", "", "warn of required fields that are left empty"},
    // For all texts that are drawn, as textOptions has them.
    {"--font", "FILE", "draw characters that the form's fonts don't have with this font first"},
    {"--any-text", "", "take a text with characters that no font has, too, and leave them out where it is drawn"},
};
constexpr const char* skippingHint = " (--skip-unknown passes over it)";

// One for each thread, which all files of a batch share.
auto engineOf(const CommandLine& line)
{
    Text::Options text;
    if (line.has("--font"))
        text.fontFiles.push_back(line.argument("--font"));
    return [text = std::move(text)] {
        thread_local std::shared_ptr<Host::TextEngine> engine;
        if (engine)
            return Host::Result<std::shared_ptr<Host::TextEngine>>(engine);
        auto loaded = Text::loadEngine(text);
        if (loaded)
            engine = *loaded;
        return loaded;
    };
}

} // namespace

OptionGroup fillOptions()
{
    return {"drawing", options};
}

OptionGroup textOptions()
{
    return {"drawing", std::span(options).last(2)};
}

Host::Result<Host::FillOptions> fillOptionsOf(const CommandLine& line)
{
    Host::FillOptions result;
    if (std::string conflict = line.conflictAmong({"--viewer-looks", "--keep-looks"}); !conflict.empty())
        return Host::Refusal{Host::Reason::WrongArgument, std::move(conflict)};
    if (line.has("--viewer-looks"))
        result.appearances = Host::Appearances::DrawnByViewers;
    if (line.has("--keep-looks"))
        result.appearances = Host::Appearances::LeftAsTheyAre;
    result.engine = engineOf(line);
    result.areFontsLater = true;
    result.isAnyTextAllowed = line.has("--any-text");
    result.areRequiredChecked = line.has("--check-required");
    result.isXfaKept = line.has("--keep-xfa");
    result.limitFactor = limitFactorOf(line).value_or(1);
    return result;
}

std::vector<Host::Refusal> fillAll(Host::FormFiller& filler, const Host::FieldValues& values,
    const Host::FillOptions& how, UnknownFields unknown, std::vector<std::string>& warnings)
{
    std::vector<Host::Refusal> refusals;
    for (const auto& [name, value] : values) {
        const auto refusal = filler.fill(name, value, how);
        if (!refusal)
            continue;
        const bool isUnknown = !filler.takesValue(name);
        if (!isUnknown || unknown == UnknownFields::Refused)
            refusals.push_back(
                {refusal->reason, name + ": " + refusal->message + (isUnknown ? skippingHint : ""), refusal->code});
        else if (warnings.size() < Limits::maxSkipped)
            warnings.push_back(name + ": " + refusal->message + ", and the value is passed over");
    }
    return refusals;
}

Host::FlattenOptions flattenOptionsOf(const CommandLine& line)
{
    return {.engine = engineOf(line), .isAnyTextAllowed = line.has("--any-text"),
        .limitFactor = limitFactorOf(line).value_or(1)};
}

void addWarnings(std::vector<std::string>& warnings, const std::vector<std::string>& more)
{
    for (const std::string& warning : more)
        if (std::find(warnings.begin(), warnings.end(), warning) == warnings.end())
            warnings.push_back(warning);
}

} // namespace Tools
