#include <tools/Saving.h>

#include <host/losses/Examine.h>
#include <tools/FileProgress.h>
#include <tools/Hints.h>

namespace Tools {

OptionGroup saveOptions()
{
    static constexpr Option options[] = {
        {"--strict", "", "refuse what `files-pdf-inspect --losses` lists"},
        {"--unverified", "", "don't compare the new file with the document"},
        {"--partial", "",
            "also save a document that is only partly in memory: without a catalog, updated, encrypted, or changed on "
            "disk meanwhile"},
    };
    return {"saving", options};
}

Host::SaveOptions saveOptionsOf(const CommandLine& line)
{
    Host::SaveOptions options;
    options.isStrict = line.has("--strict");
    options.isPartialAllowed = line.has("--partial");
    options.isUnverified = line.has("--unverified");
    return options;
}

std::optional<Host::Refusal> lossesOf(const Ref<Host::FileStripe>& file)
{
    const auto examination = Host::examine(file);
    if (!examination)
        return examination.refusal();
    if (examination->losses.countOfMeaning() == 0)
        return {};
    return Host::Refusal{Host::Reason::Lossy, "saving loses " + examination->losses.summary() + lossesHint};
}

Saving::Saving(const CommandLine& line, const Console& console) : _options(saveOptionsOf(line)), _console(console) {}

std::optional<int> Saving::checkLosses(const Ref<Host::FileStripe>& file, const std::string& in) const
{
    const auto losses = withProgress("examining", [&file] { return lossesOf(file); });
    if (losses && _options.isStrict)
        return _console.refuse(in, *losses);
    if (losses)
        _console.warn(in, losses->message);
    return {};
}

int Saving::save(const Host::OpenedFile& opened, const std::string& in, const std::string& out) const
{
    if (opened.file)
        if (const auto status = checkLosses(opened.file, in))
            return *status;
    Host::SaveOptions options = _options;
    options.isStrict = false; // examined above
    const auto saved = withProgress("saving", [&] { return Host::save(opened, out, options); });
    if (!saved) {
        Host::Refusal refusal = saved.refusal().withPrefix("can't be saved as " + out + ": ");
        refusal.message += partialHint(refusal);
        return _console.refuse(in, refusal);
    }
    if (saved->durability == Host::Durability::Unknown)
        _console.warn(out, "was written, but its folder can't be synced");
    return _console.finish();
}

} // namespace Tools
