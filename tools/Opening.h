#pragma once

#include <import/OpenAny.h>
#include <tools/CommandLine.h>
#include <tools/Console.h>

namespace Tools {

// How files are opened.
struct OpenOptions {
    Import::DoorUse use = Import::DoorUse::Automatic;
    Import::Options import;
    std::uint64_t limitFactor = 1; // of what is done with the document (`Host::Budget`)
};

// A document, and the way that it came.
struct Opened : Host::OpenedFile {
    std::string why;                      // it was imported; empty when it wasn't, or was on demand
    std::optional<Import::Report> report; // of what was done to the file; none when it wasn't imported
    Ref<Host::FileStripe> source;         // the file, also when the document was detached from it
    std::string password;                 // that it was opened with
    std::uint64_t limitFactor = 1;        // of what is done with it
};

// The options of every program that opens files, and what they say. Refused when there is no password in its file.
OptionGroup openOptions();
Host::Result<OpenOptions> openOptionsOf(const CommandLine& line);
// What one of them says of limits; absent for what can't be one.
std::optional<std::uint64_t> limitFactorOf(const CommandLine& line);

// Opens a file by the core or the library of imports, and says nothing.
Host::Result<Opened> open(const std::string& path, const OpenOptions& options);
Host::Result<Opened> open(const Ref<Host::FileStripe>& source, const OpenOptions& options);

// How a program opens: by its options, with a bar, and with a line for what isn't as usual. The console lives longer.
class Opening {
public:
    Opening(const CommandLine& line, const Console& console);

    // "-" is standard input. A refusal says what people may do about it.
    Host::Result<Opened> open(const std::string& path) const;

private:
    const Host::Result<OpenOptions> _options;
    const Console& _console;
};

} // namespace Tools
