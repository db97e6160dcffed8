#include <bench/Program.h>

#include <zlib.h>

#include <cinttypes>
#include <cstring>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace Bench {

namespace {

Bytes readFile(const char* path)
{
    std::FILE* file = std::fopen(path, "rb");
    if (!file)
        fail(std::string(path) + " can't be opened");
    std::fseek(file, 0, SEEK_END);
    Bytes bytes(static_cast<std::size_t>(std::ftell(file)));
    std::rewind(file);
    const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    if (got != bytes.size())
        fail(std::string(path) + " can't be read");
    return bytes;
}

// The highest resident memory of this program alone: what `getrusage` gives may be that of the process
// which started it.
std::uint64_t peakMemory()
{
    std::ifstream status("/proc/self/status");
    std::uint64_t kibibytes = 0;
    for (std::string line; std::getline(status, line);)
        if (std::sscanf(line.c_str(), "VmHWM: %" SCNu64, &kibibytes) == 1)
            return kibibytes * 1024;
    fail("the peak memory can't be had");
}

} // namespace

int runProgram(int argc, char** argv, const std::vector<Operation>& operations)
{
    const bool isChecked = argc > 1 && std::strcmp(argv[1], "--check") == 0;
    std::vector<const char*> arguments(argv + (isChecked ? 2 : 1), argv + argc);
    const bool isUsable = arguments.size() >= 2 && arguments.size() <= 4;
    arguments.resize(4, nullptr);
    for (const Operation& operation : operations) {
        if (!isUsable || std::strcmp(operation.name, arguments[0]) != 0)
            continue;
        try {
            Job job{readFile(arguments[1]), arguments[2] ? arguments[2] : "",
                arguments[3] ? readFile(arguments[3]) : Bytes(), isChecked};
            operation.run(job);
            print("peak_bytes", peakMemory());
            return 0;
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "%s: %s\n", operation.name, failure.what());
            return 1;
        }
    }
    std::fprintf(stderr, "usage: %s [--check] OPERATION IN [OUT [FOREIGN]]\n\nThe operations:\n", argv[0]);
    for (const Operation& operation : operations)
        std::fprintf(stderr, "  %s\n", operation.name);
    return 2;
}

void print(const char* name, std::uint64_t value)
{
    std::printf("%s %" PRIu64 "\n", name, value);
}

void print(const char* name, double value)
{
    std::printf("%s %.3f\n", name, value);
}

void fail(const std::string& words)
{
    throw std::runtime_error(words);
}

OutputFile::OutputFile(const std::string& path) : _file(std::fopen(path.c_str(), "wb")), _buffer(bufferSize)
{
    if (!_file)
        fail(path + " can't be written");
    std::setvbuf(_file, _buffer.data(), _IOFBF, _buffer.size());
}

OutputFile::~OutputFile()
{
    if (_file)
        std::fclose(_file);
}

void OutputFile::write(const void* data, std::size_t size) noexcept
{
    _size += std::fwrite(data, 1, size, _file);
}

void OutputFile::close()
{
    const bool isWritten = std::ferror(_file) == 0;
    if (std::fclose(std::exchange(_file, nullptr)) != 0 || !isWritten)
        fail("the file can't be written");
}

void DecodedData::add(const void* data, std::size_t size, bool isChecked)
{
    bytes += size;
    if (isChecked)
        checksum = static_cast<std::uint32_t>(crc32_z(checksum, static_cast<const Bytef*>(data), size));
}

void DecodedData::print(bool isChecked) const
{
    Bench::print("decoded_bytes", bytes);
    if (isChecked)
        Bench::print("checksum", std::uint64_t(checksum));
}

double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

} // namespace Bench
