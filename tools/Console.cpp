#include <tools/Console.h>

#include <host/base/ErrorWords.h>
#include <platform/Error.h>
#include <tools/LogKeeping.h>
#include <tools/ShownText.h>

#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace Tools {

namespace {

// Whether standard output is a pipe that nobody reads any more.
bool isReaderGone()
{
    pollfd output = {STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & POLLERR);
}

} // namespace

Console::Console(std::string name, const LogKeeping* log) : _name(std::move(name)), _log(log) {}

int Console::misuse(const std::string& message) const
{
    std::fprintf(stderr, "%s: %s; see %s --help\n", _name.c_str(), shown(message).c_str(), _name.c_str());
    return Unusable;
}

int Console::refuse(const std::string& file, const Host::Refusal& refusal) const
{
    const std::string code = refusal.code ? " (" + Host::codeText(refusal.code) + ")" : "";
    const bool isNamed = refusal.code == ErrBadObject && _log && !_log->lastFailure().empty();
    std::fprintf(stderr, "%s: %s: %s%s%s\n", _name.c_str(), shown(file).c_str(), shown(refusal.message).c_str(),
        code.c_str(), isNamed ? (": " + _log->lastFailure()).c_str() : "");
    return refusal.isUnusable() ? Unusable : Refused;
}

void Console::warn(const std::string& file, const std::string& message) const
{
    std::fprintf(stderr, "%s: %s: warning: %s\n", _name.c_str(), shown(file).c_str(), shown(message).c_str());
}

void Console::note(const std::string& file, const std::string& message) const
{
    std::fprintf(stderr, "%s: %s: %s\n", _name.c_str(), shown(file).c_str(), shown(message).c_str());
}

int Console::finish() const
{
    if (std::fflush(stdout) == 0 && !std::ferror(stdout))
        return Done;
    if (isReaderGone()) {
        std::signal(SIGPIPE, SIG_DFL);
        std::raise(SIGPIPE);
    }
    std::fprintf(stderr, "%s: standard output: can't be written\n", _name.c_str());
    return Unusable;
}

} // namespace Tools
