#pragma once

#include <cstddef>
#include <span>
#include <string>

// The files that the programs are measured on: classic PDF files in the strict form, made anew from a
// few numbers, byte for byte the same each time.
namespace Bench {

struct Workload {
    const char* name;
    const char* counted; // what the count counts
    // The bytes of the file. Every object can be reached from the catalog, and no number has digits
    // that one of the libraries would lose.
    std::string (*make)(std::size_t count);
};

std::span<const Workload> workloads() noexcept;

} // namespace Bench
