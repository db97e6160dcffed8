#pragma once

#include <host/base/Result.h>

#include <string>

namespace Tools {

class LogKeeping;

enum ExitStatus : int {
    Done = 0,
    Refused = 1,  // the document, or what is asked of it, was refused
    Unusable = 2, // wrong use, or the system didn't give what the work needs
};

// What a program says to people: lines on standard error that begin with its name. What ends the program gives its
// exit status.
class Console {
public:
    // `name` is the one that the program is called by. The log lives longer.
    explicit Console(std::string name, const LogKeeping* log = nullptr);

    const std::string& name() const { return _name; }
    // Wrong use: what is wrong, and where to read more.
    int misuse(const std::string& message) const;
    // What is wrong with the file, and the code; of an object or a value that can't be read, which one the log names.
    int refuse(const std::string& file, const Host::Refusal& refusal) const;
    // The program goes on: what may be wrong, and what is only to be known.
    void warn(const std::string& file, const std::string& message) const;
    void note(const std::string& file, const std::string& message) const;
    // The end of a program that went well, unless what it printed did not arrive. Where nobody reads it any more the
    // program ends by SIGPIPE, as others do.
    int finish() const;

private:
    const std::string _name;
    const LogKeeping* const _log;
};

} // namespace Tools
