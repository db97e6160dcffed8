#include <host/Save.h>

#include "../support/Streams.h"
#include "TestFolder.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <map>
#include <random>
#include <thread>

using namespace Tests;
using namespace Host;

namespace {

const SaveOptions unverified{false, true, nullptr};

// Saves the two documents by turns for as long as it lives.
[[noreturn]] void saveForEver(
    const Ref<PDF::Document>& first, const Ref<PDF::Document>& second, const std::string& path)
{
    for (;;)
        if (!save(first, path) || !save(second, path, unverified))
            ::_exit(1);
}

// What killed saves left in the folder: by name, what makes each file the one that it is.
std::map<std::string, std::string> leftBehind(const std::string& folder)
{
    std::map<std::string, std::string> result;
    for (const auto& entry : fs::directory_iterator(folder)) {
        struct stat found = {};
        ::stat(entry.path().c_str(), &found);
        if (entry.path().filename() != "file.pdf")
            result[entry.path().filename()] = std::to_string(found.st_ino) + " " + std::to_string(found.st_size) + " "
                + std::to_string(found.st_mtim.tv_sec) + " " + std::to_string(found.st_mtim.tv_nsec);
    }
    return result;
}

} // namespace

// A save is killed at a random moment, 200 times over the same file.
TEST(KilledSave, leavesTheOldFileOrTheNewAndOneFileBesideThemAtMost)
{
    constexpr int kills = 200;
    const TestFolder folder;
    const Ref<PDF::Document> first = Tests::open(PdfText().pages().stream(3, std::string(70000, 'a')));
    const Ref<PDF::Document> second = Tests::open(PdfText().pages().stream(3, std::string(30000, 'b')));
    const std::string whole[] = {written(first), written(second)};
    const std::string path = folder.put("file.pdf", whole[0]);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(save(first, path) && save(second, path, unverified));
    const std::chrono::duration<double> round = std::chrono::steady_clock::now() - start;

    std::mt19937 random(1);
    auto left = leftBehind(fs::path(path).parent_path());
    for (int i = 0; i < kills; ++i) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            saveForEver(first, second, path);
        std::this_thread::sleep_for(round * std::uniform_real_distribution(0.0, 1.5)(random));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "no save is refused";
        const std::string found = folder.get("file.pdf");
        ASSERT_TRUE(found == whole[0] || found == whole[1]) << found.size();
        const auto leftNow = leftBehind(fs::path(path).parent_path());
        ASSERT_LE(leftNow.size(), left.size() + 1);
        for (const auto& [name, file] : leftNow)
            EXPECT_TRUE(left.contains(name) ? left[name] == file : name.starts_with(".files-pdf-")) << name;
        for (const auto& [name, file] : left)
            EXPECT_TRUE(leftNow.contains(name)) << name;
        left = leftNow;
    }
    ASSERT_TRUE(save(first, path));
    EXPECT_TRUE(folder.get("file.pdf") == whole[0]);
    EXPECT_EQ(leftBehind(fs::path(path).parent_path()), left) << "no later save uses them or takes them away";
    RecordProperty("kills", kills);
    std::printf("kills survived: %d, of which %zu left a file\n", kills, left.size());
}
