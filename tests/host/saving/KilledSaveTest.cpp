#include <host/saving/Save.h>

#include <tests/support/Streams.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

using namespace Tests;
using namespace Host;

// A save is killed at a random moment, 200 times over the same file.
TEST(KilledSave, leavesTheOldFileOrTheNewAndOneFileBesideThemAtMost)
{
    constexpr int kills = 200;
    const SaveOptions unverified{.isUnverified = true};
    const TestFolder folder;
    const Ref<PDF::Document> first = Tests::open(PdfText().pages().stream(3, std::string(70000, 'a')));
    const Ref<PDF::Document> second = Tests::open(PdfText().pages().stream(3, std::string(30000, 'b')));
    const std::string path = folder.path("file.pdf");
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(save(second, path));
    const std::string other = folder.get("file.pdf");
    ASSERT_TRUE(save(first, path, unverified));
    const std::chrono::duration<double> round = std::chrono::steady_clock::now() - start;
    const std::string whole[] = {folder.get("file.pdf"), other};

    std::mt19937 random(1);
    auto count = folder.count();
    for (int i = 0; i < kills; ++i) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            while (save(first, path) && save(second, path, unverified))
                continue;
            ::_exit(1);
        }
        std::this_thread::sleep_for(round * std::uniform_real_distribution(0.0, 1.5)(random));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "no save is refused";
        const std::string found = folder.get("file.pdf");
        ASSERT_TRUE(found == whole[0] || found == whole[1]) << found.size();
        const auto before = std::exchange(count, folder.count());
        ASSERT_TRUE(count == before || count == before + 1);
    }
    ASSERT_TRUE(save(first, path));
    EXPECT_TRUE(folder.get("file.pdf") == whole[0]);
    EXPECT_EQ(folder.count(), count) << "no later save uses them or takes them away";
    for (const auto& entry : fs::directory_iterator(fs::path(path).parent_path()))
        EXPECT_TRUE(entry.path() == path || entry.path().filename().string().starts_with(".files-pdf-"));
    RecordProperty("kills", kills);
    std::printf("kills survived: %d, of which %td left a file\n", kills, count - 1);
}
