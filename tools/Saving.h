#pragma once

#include <host/saving/Save.h>
#include <tools/CommandLine.h>
#include <tools/Console.h>

namespace Tools {

// The options of every program that saves, and what they say.
OptionGroup saveOptions();
Host::SaveOptions saveOptionsOf(const CommandLine& line);

// A message of what saving loses of the file, or why that can't be told; none when it loses nothing.
std::optional<Host::Refusal> lossesOf(const Ref<Host::FileStripe>& file);

// How a program saves: by its options, with a bar, and with a line for whatever goes wrong. The command line and the
// console live longer.
class Saving {
public:
    Saving(const CommandLine& line, const Console& console);

    // Says what saving loses of the file that was opened from `in`, if anything. With --strict that is the end, and
    // the exit status comes back.
    std::optional<int> checkLosses(const Ref<Host::FileStripe>& file, const std::string& in) const;
    // Saves what was opened from `in` as `out`, and gives the exit status. The losses of a document that was detached
    // from its file are to be checked before.
    int save(const Host::OpenedFile& opened, const std::string& in, const std::string& out) const;

private:
    const Host::SaveOptions _options;
    const Console& _console;
};

} // namespace Tools
