#include "Check.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Runs one target over files and over all files of folders, for builds without libFuzzer. The name of each file is
// printed before it is run, so that the last one is to blame when the program ends there.

namespace {

bool runFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "can't read %s\n", path.c_str());
        return false;
    }
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::filesystem::path> paths;
    for (const std::filesystem::path argument : std::vector<std::string>(argv + 1, argv + argc)) {
        if (!std::filesystem::is_directory(argument)) {
            paths.push_back(argument);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argument))
            if (entry.is_regular_file())
                paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    const bool isRun = !paths.empty() && std::all_of(paths.begin(), paths.end(), runFile);
    std::printf("%zu inputs\n", paths.size());
    return isRun ? 0 : 2;
}
