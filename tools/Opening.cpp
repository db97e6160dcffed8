#include <tools/Opening.h>

#include <import/Loader.h>
#include <tools/FileProgress.h>
#include <tools/Hints.h>
#include <tools/StandardFiles.h>

#include <fstream>

namespace Tools {

namespace {

constexpr std::size_t longestPassword = 1024; // bytes, far more than any cipher uses

// The first line of a file, which may be a pipe.
Host::Result<std::string> readPassword(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string password(longestPassword, '\0');
    file.read(password.data(), std::streamsize(password.size()));
    if (!file.is_open() || file.bad() || (file.fail() && !file.eof()))
        return Host::Refusal{Host::Reason::Unreadable, "the password file " + path + " can't be read"};
    password.resize(std::size_t(file.gcount()));
    const std::size_t end = password.find_first_of("\r\n");
    if (end == password.npos && password.size() == longestPassword)
        return Host::Refusal{Host::Reason::Unreadable, "the first line of " + path + " is too long for a password"};
    password.resize(std::min(end, password.size()));
    return password;
}

// What people may do about the refusal, after its message.
Host::Refusal withHints(Host::Refusal refusal, const OpenOptions& options)
{
    if (refusal.reason == Host::Reason::PasswordNeeded)
        refusal.message += "; --password-file FILE gives one";
    else if (refusal.reason == Host::Reason::BrokenRule && options.use != Import::DoorUse::Never
        && !options.import.isRepairAllowed)
        refusal.message += "; --repair may open it";
    return withOpeningHint(std::move(refusal));
}

// "cross-reference streams; imported and repaired"
std::string noteOf(const Opened& opened)
{
    const Import::Report& report = *opened.report;
    std::string note = opened.why + (opened.why.empty() ? "imported" : "; imported");
    if (report.isRepaired)
        note += " and repaired, with " + std::to_string(report.warningCount) + " guesses: "
            + (report.warnings.empty() ? "" : report.warnings.front()) + (report.warningCount > 1 ? ", ..." : "");
    return note;
}

} // namespace

OptionGroup openOptions()
{
    static constexpr Option options[] = {
        {"--import", "auto|never|always",
            "whether libqpdf reads the file: auto, as without the option, where the core doesn't open it whole"},
        {"--password-file", "FILE", "the first line of FILE is the password of encrypted files"},
        {"--repair", "", "let libqpdf guess what a damaged file was meant to say"},
        {"--limit-factor", "N", "let the work on a file take N times what it may for a file of its size"},
    };
    return {"opening", options};
}

Host::Result<OpenOptions> openOptionsOf(const CommandLine& line)
{
    OpenOptions options;
    const std::string use = line.argument("--import", "auto");
    options.use = use == "never" ? Import::DoorUse::Never
        : use == "always"        ? Import::DoorUse::Always
                                 : Import::DoorUse::Automatic;
    options.import.isRepairAllowed = line.has("--repair");
    if (line.has("--password-file")) {
        auto password = readPassword(line.argument("--password-file"));
        if (!password)
            return password.refusal();
        options.import.password = std::move(*password);
    }
    if (const auto factor = limitFactorOf(line))
        options.limitFactor = *factor;
    else
        return Host::Refusal{Host::Reason::Unreadable, "--limit-factor can't be read as a number from 1"};
    return options;
}

std::optional<std::uint64_t> limitFactorOf(const CommandLine& line)
{
    const auto factor = numberOf(line.argument("--limit-factor", "1"));
    return factor && *factor > 0 ? std::optional<std::uint64_t>(*factor) : std::nullopt;
}

Host::Result<Opened> open(const std::string& path, const OpenOptions& options)
{
    const auto file = Host::FileStripe::open(path);
    return file ? open(*file, options) : Host::Result<Opened>(file.refusal());
}

Host::Result<Opened> open(const Ref<Host::FileStripe>& source, const OpenOptions& options)
{
    auto opened = Import::openAny(Import::openIfInstalled, source, options.import, options.use);
    if (!opened)
        return withHints(opened.refusal(), options);
    const Ref<Host::FileStripe> file = opened->opened.file;
    return Opened{std::move(opened->opened), std::move(opened->why), std::move(opened->report), file,
        options.import.password, options.limitFactor};
}

Opening::Opening(const CommandLine& line, const Console& console) : _options(openOptionsOf(line)), _console(console) {}

Host::Result<Opened> Opening::open(const std::string& path) const
{
    if (!_options)
        return _options.refusal();
    const auto file = isStandard(path) ? readStandardInput() : Host::FileStripe::open(path);
    if (!file)
        return file.refusal();
    auto opened = withProgress("opening", [&] { return Tools::open(*file, *_options); });
    if (opened && opened->report)
        _console.note(path, noteOf(*opened));
    return opened;
}

} // namespace Tools
