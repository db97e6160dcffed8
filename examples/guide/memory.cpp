// Prints what opening a file takes of memory.

#include <document/Inspection.h>
#include <host/files/Open.h>
#include <values/Object.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>

namespace {

// What of the process is in memory, in bytes.
std::size_t residentSize()
{
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * std::size_t(sysconf(_SC_PAGESIZE));
}

} // namespace

int main(int argc, char** argv)
{
    const std::size_t before = residentSize();
    auto opened = Host::open(argc > 1 ? argv[1] : "in.pdf");
    if (!opened)
        return 1;
    const std::size_t taken = residentSize() - before;
    const std::size_t objects = Libraries::Files::PDF::objectsOf(opened->document).size();
    std::printf("%zu bytes for %zu objects, %.1f for each; %.2f for each byte of the file\n", taken, objects,
        double(taken) / double(objects), double(taken) / double(opened->file->size()));
}
