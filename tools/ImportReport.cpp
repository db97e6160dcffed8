#include <tools/ImportReport.h>

#include <tools/Json.h>

namespace Tools {

namespace {

std::string jsonOf(bool value)
{
    return value ? "true" : "false";
}

std::string jsonOf(const std::vector<std::string>& texts)
{
    std::string out;
    for (const std::string& text : texts)
        out += (out.empty() ? "" : ", ") + json(text);
    return std::string("[").append(out) + "]";
}

std::string jsonOf(const Import::Places& places)
{
    return "{\"count\": " + std::to_string(places.count) + ", \"places\": " + jsonOf(places.names) + "}";
}

std::string jsonOf(const std::optional<Import::Permissions>& permissions)
{
    if (!permissions)
        return "null";
    const std::pair<const char*, bool> all[] = {
        {"owner", permissions->isOwner},
        {"print", permissions->mayPrint},
        {"printWell", permissions->mayPrintWell},
        {"change", permissions->mayChange},
        {"assemble", permissions->mayAssemble},
        {"fill", permissions->mayFill},
        {"annotate", permissions->mayAnnotate},
        {"copy", permissions->mayCopy},
        {"readAloud", permissions->mayReadAloud},
    };
    std::string out;
    for (const auto& [key, isGiven] : all)
        out += (out.empty() ? "" : ", ") + json(key) + ": " + jsonOf(isGiven);
    return std::string("{").append(out) + "}";
}

} // namespace

std::string importJson(const Opened& opened)
{
    if (!opened.report)
        return "null";
    const Import::Report& report = *opened.report;
    return "{\"why\": " + json(opened.why) + ", \"tables\": " + std::to_string(report.tables)
        + ", \"objectStreams\": " + std::to_string(report.objectStreams)
        + ", \"decrypted\": " + jsonOf(report.isDecrypted) + ", \"permissions\": " + jsonOf(report.permissions)
        + ", \"repaired\": " + jsonOf(report.isRepaired)
        + ", \"warningCount\": " + std::to_string(report.warningCount) + ", \"warnings\": " + jsonOf(report.warnings)
        + ", \"unknownVersion\": " + (report.unknownVersion.empty() ? "null" : json(report.unknownVersion))
        + ", \"rounded\": " + jsonOf(report.rounded) + ", \"emptyNames\": " + jsonOf(report.emptyNames)
        + ", \"replaced\": " + jsonOf(report.replaced) + "}";
}

std::string importLosses(const Import::Report& report)
{
    std::string out;
    const std::pair<const Import::Places*, const char*> all[] = {
        {&report.rounded, " numbers rounded"}, {&report.emptyNames, " names without a character"}};
    for (const auto& [places, words] : all)
        if (places->count != 0)
            out += (out.empty() ? "" : "; ") + std::to_string(places->count) + words + ", first in "
                + places->names.front();
    return out;
}

} // namespace Tools
