#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

// What the measured programs share: their command line, their files and what they print. Each run does one
// operation on one file and ends, so that the whole process can be measured from outside.
namespace Bench {

using Bytes = std::vector<std::uint8_t>;

// One run. A file name that the command line lacks is empty, and so are its bytes.
struct Job {
    Bytes bytes;     // of the file to work on
    std::string out; // the file to write
    Bytes foreign;   // of a second file
    bool isChecked;  // work out checksums too; a run that is measured doesn't
};

// An operation throws a `std::exception` when it fails.
struct Operation {
    const char* name;
    void (*run)(Job& job);
};

// Runs "PROGRAM [--check] OPERATION IN [OUT [FOREIGN]]" and gives the exit status: 0, 1 when the operation
// failed, 2 for wrong use. The last line printed is the peak memory.
int runProgram(int argc, char** argv, const std::vector<Operation>& operations);

// Prints one result as "name value", for `compare`.
void print(const char* name, std::uint64_t value);
void print(const char* name, double value);

[[noreturn]] void fail(const std::string& words);

// A file to be written, with the same buffer for each library and no more calls of the system than it needs.
class OutputFile {
public:
    static constexpr std::size_t bufferSize = 65536;

    explicit OutputFile(const std::string& path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    void write(const void* data, std::size_t size) noexcept;
    std::uint64_t size() const noexcept { return _size; }
    // Throws when not everything could be written.
    void close();

private:
    std::FILE* _file; // null once it was closed
    std::vector<char> _buffer;
    std::uint64_t _size = 0;
};

// The decoded streams of a document, in the order of their objects.
struct DecodedData {
    std::uint64_t bytes = 0;
    std::uint32_t checksum = 0; // only when it is asked for

    void add(const void* data, std::size_t size, bool isChecked);
    void print(bool isChecked) const;
};

// The processor time of this process so far, in nanoseconds.
double processorTime();

} // namespace Bench
