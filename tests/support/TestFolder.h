#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace Tests {

namespace fs = std::filesystem;

// A folder of a test's own, which goes with all that is in it.
class TestFolder {
public:
    TestFolder()
    {
        std::string name = fs::temp_directory_path() / "files-pdf-test-XXXXXX";
        if (!::mkdtemp(name.data()))
            std::abort();
        _folder = name;
        fs::permissions(_folder, fs::perms::all);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() { fs::remove_all(_folder); }

    std::string path(const std::string& name) const { return _folder / name; }
    // Writes a file in place and gives its path.
    std::string put(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }
    std::string get(const std::string& name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // How many things are in it.
    std::ptrdiff_t count() const { return std::distance(fs::directory_iterator(_folder), fs::directory_iterator()); }

private:
    fs::path _folder;
};

} // namespace Tests
