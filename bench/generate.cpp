// Writes one of the files that the programs are measured on.

#include <bench/Generator.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

int main(int argc, char** argv)
{
    const char* name = argc == 4 ? argv[1] : "";
    for (const Bench::Workload& workload : Bench::workloads()) {
        if (std::strcmp(workload.name, name) != 0)
            continue;
        std::ofstream out(argv[3], std::ios::binary);
        out << workload.make(std::strtoull(argv[2], nullptr, 10)) << std::flush;
        if (!out)
            std::fprintf(stderr, "generate: %s: can't be written\n", argv[3]);
        return out ? 0 : 2;
    }
    std::fputs("usage: generate WORKLOAD COUNT OUT\n\nThe workloads, and what COUNT counts:\n", stderr);
    for (const Bench::Workload& workload : Bench::workloads())
        std::fprintf(stderr, "  %-15s %s\n", workload.name, workload.counted);
    return 2;
}
