#include <tools/Saving.h>

#include <document/Inspection.h>
#include <host/losses/Examine.h>
#include <host/losses/ReadingLosses.h>
#include <import/Loader.h>
#include <tools/FileProgress.h>
#include <tools/Hints.h>
#include <tools/ImportReport.h>
#include <tools/StandardFiles.h>

namespace Tools {

OptionGroup saveOptions()
{
    static constexpr Option options[] = {
        {"--strict", "", "refuse what `files-pdf-inspect --losses` lists"},
        {"--unverified", "", "don't compare the new file with the document"},
        {"--partial", "",
            "also save a document that is only partly in memory: without a catalog, updated, encrypted, or changed on "
            "disk meanwhile"},
        {"--lossy", "", "also save a document that was read otherwise than it is meant"},
        {"--plain", "", "write numbers and strings as they were read, and a table without gaps"},
        {"--keep-id", "", "leave the second part of the trailer's ID as it is"},
        {"--compact", "", "put the objects into compressed streams, as most programs do"},
        {"--decrypt", "", "save what was encrypted so that anybody can read it"},
        {"--encrypt-as-before", "", "encrypt it again, with the same passwords and permissions"},
    };
    return {"saving", options};
}

Host::SaveOptions saveOptionsOf(const CommandLine& line)
{
    Host::SaveOptions options;
    options.isStrict = line.has("--strict");
    options.isPartialAllowed = line.has("--partial");
    options.isUnverified = line.has("--unverified");
    options.isLossyAllowed = line.has("--lossy");
    options.isPlain = line.has("--plain");
    options.isIdKept = line.has("--keep-id");
    return options;
}

StoreOptions storeOptionsOf(const CommandLine& line)
{
    return {line.has("--compact"), line.has("--decrypt"), line.has("--encrypt-as-before")};
}

Host::Result<Host::Saved> save(
    const Opened& opened, const std::string& path, Host::SaveOptions options, const StoreOptions& storage)
{
    options.limitFactor = opened.limitFactor;
    const bool wasEncrypted = opened.report && opened.report->isDecrypted;
    if (wasEncrypted && storage.isDecrypted == storage.isEncryptedAsBefore)
        return Host::Refusal{Host::Reason::Encrypted,
            "is encrypted; --decrypt saves it for anybody to read, or --encrypt-as-before as it was"};
    const bool isEncrypted = wasEncrypted && storage.isEncryptedAsBefore;
    if (!isEncrypted && !storage.isCompact)
        return Host::save(opened, path, options);
    const Import::Storage stored{storage.isCompact, isEncrypted ? opened.source : nullptr, opened.password};
    return Import::saveIfInstalled(opened, path, stored, options);
}

std::optional<Host::Refusal> lossesOf(const Opened& opened)
{
    if (opened.report) {
        const std::string losses = importLosses(*opened.report);
        if (losses.empty())
            return {};
        return Host::Refusal{Host::Reason::Lossy, "importing lost " + losses};
    }
    if (!opened.file)
        return {}; // it was detached, and examined before
    const auto examination = Host::examine(opened.file, opened.limitFactor);
    if (!examination)
        return examination.refusal();
    if (examination->losses.countOfMeaning() == 0)
        return {};
    return Host::Refusal{Host::Reason::Lossy, "saving loses " + examination->losses.summary() + lossesHint};
}

std::optional<Host::Refusal> refuseContent(const Opened& opened, const Host::SaveOptions& options)
{
    const std::string losses = Host::lossesOfReading(Host::PDF::readingNotes(opened.document));
    if (!options.isLossyAllowed && !losses.empty()) {
        Host::Refusal refusal{Host::Reason::Lossy, "was read otherwise than it is meant; lost are " + losses};
        refusal.message += savingHint(refusal);
        return refusal;
    }
    return options.isStrict ? lossesOf(opened) : std::nullopt;
}

Saving::Saving(const CommandLine& line, const Console& console)
    : _options(saveOptionsOf(line)), _storage(storeOptionsOf(line)), _console(console)
{
}

std::optional<int> Saving::checkContent(const Opened& opened, const std::string& in) const
{
    const auto refusal = withProgress("examining", [&] { return refuseContent(opened, _options); });
    return refusal ? std::optional<int>(_console.refuse(in, *refusal)) : std::nullopt;
}

int Saving::save(const Opened& opened, const std::string& in, const std::string& out) const
{
    if (_options.isStrict)
        if (const auto losses = withProgress("examining", [&opened] { return lossesOf(opened); }))
            return _console.refuse(in, *losses);
    Host::SaveOptions options = _options;
    options.isStrict = false; // examined above
    if (isStandard(out))
        return saveToOutput(opened, in, options);
    const auto saved = withProgress("saving", [&] { return Tools::save(opened, out, options, _storage); });
    if (!saved)
        return refuse(opened, in, out, saved.refusal());
    if (saved->durability == Host::Durability::Unknown)
        _console.warn(out, "was written, but its folder can't be synced");
    return _console.finish();
}

// To standard output, once the whole is written and compared.
int Saving::saveToOutput(const Opened& opened, const std::string& in, const Host::SaveOptions& options) const
{
    auto file = OutputByFile::create();
    if (!file)
        return _console.refuse(in, file.refusal());
    const auto saved = withProgress("saving", [&] { return Tools::save(opened, file->path(), options, _storage); });
    if (!saved)
        return refuse(opened, in, "standard output", saved.refusal());
    if (const auto refusal = file->copy())
        return _console.refuse("standard output", *refusal);
    return Done;
}

int Saving::refuse(
    const Opened& opened, const std::string& in, const std::string& out, const Host::Refusal& cause) const
{
    Host::Refusal refusal = cause.withPrefix("can't be saved as " + out + ": ");
    refusal.message += opened.report ? "" : savingHint(refusal); // of an import all is there
    return _console.refuse(in, refusal);
}

} // namespace Tools
