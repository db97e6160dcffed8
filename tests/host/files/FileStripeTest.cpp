#include <host/files/FileStripe.h>
#include <host/files/MemoryStripe.h>
#include <host/files/ReadWatch.h>

#include <tests/support/TestStripe.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <functional>
#include <thread>

using namespace Tests;
using namespace Host;

namespace {

template <class Element>
std::vector<Element> readAt(Interfaces::Stripe& stripe, std::uint64_t position, std::uint64_t count)
{
    stripe.seek(position);
    return readFrom<Element>(stripe, count);
}

// Single elements, runs over the limits of blocks, backwards, and over the end.
template <class Element>
void expectReads(Interfaces::Stripe& stripe, const std::vector<Element>& all)
{
    ASSERT_EQ(stripe.size(), all.size());
    for (std::uint64_t position = all.size(); position-- > 0;)
        ASSERT_EQ(readAt<Element>(stripe, position, 1), std::vector<Element>{all[position]}) << position;
    for (const long position : {0, 16383, 16384, 30000}) {
        const long end = std::min<long>(position + 20000, long(all.size()));
        const std::vector<Element> expected(all.begin() + position, all.begin() + end);
        EXPECT_EQ(readAt<Element>(stripe, std::uint64_t(position), 20000), expected) << position;
        EXPECT_EQ(stripe.tell(), std::uint64_t(end));
    }
    Error::set(0);
    EXPECT_TRUE(readAt<Element>(stripe, ~std::uint64_t(0), 1).empty());
    EXPECT_EQ(Error::get(), ErrOutOfRange);
    EXPECT_EQ(stripe.tell(), all.size());
}

} // namespace

TEST(HostStripes, everyKindReadsTheSameBytes)
{
    const TestFolder folder;
    std::string text; // longer than two blocks, and no two places near each other are alike
    for (unsigned i = 0; text.size() < 40000; ++i)
        text += std::to_string(i) + static_cast<char>(i);
    const std::string path = folder.put("text", text);
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    const std::vector<std::uint32_t> elements = TestStripe(text).elements;
    expectReads<std::uint32_t>(**FileStripe::open(path), elements);
    expectReads<std::uint8_t>(**ByteFileStripe::open(path), bytes);
    expectReads<std::uint32_t>(*make<MemoryStripe>(bytes), elements);
    expectReads<std::uint8_t>(*make<ByteMemoryStripe>(bytes), bytes);
    EXPECT_TRUE(readAt<std::uint8_t>(*make<ByteMemoryStripe>(std::vector<std::uint8_t>()), 0, 1).empty());
}

TEST(HostStripes, aFileBeyondFourGigabytesIsReadAtItsEnd)
{
    const TestFolder folder;
    const std::string path = folder.put("sparse", "");
    constexpr std::uint64_t size = (std::uint64_t(1) << 32) + 70000;
    fs::resize_file(path, size - 1);
    std::ofstream(path, std::ios::app) << "\x80";
    const auto stripe = *FileStripe::open(path);
    EXPECT_EQ(stripe->size(), size);
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, size - 2, 5), (std::vector<std::uint32_t>{0, 0x20AC}));
}

TEST(HostStripes, whatAFileGrowsByIsNotReadAndWhatItShrinksByFails)
{
    const TestFolder folder;
    const std::string path = folder.put("text", std::string(60000, 'x'));
    const auto stripe = *FileStripe::open(path);
    std::ofstream(path, std::ios::app) << " and more";
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, 59999, 20).size(), 1u);
    EXPECT_TRUE(readAt<std::uint32_t>(*stripe, 60000, 1).empty());
    fs::resize_file(path, 20000);
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, 0, 60000).size(), 20000u);
    EXPECT_EQ(Error::get(), ErrNoResource);
    EXPECT_TRUE(readAt<std::uint32_t>(*stripe, 20000, 1).empty());
    EXPECT_TRUE(readAt<std::uint32_t>(*stripe, 50000, 1).empty());
    EXPECT_EQ(stripe->readFailure().value().message, "became shorter while it was being read");
    EXPECT_EQ(stripe->size(), 60000u);
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, 19999, 1).size(), 1u);
}

TEST(HostStripes, aFileTellsWhetherItWasChangedInPlace)
{
    const TestFolder folder;
    const auto rewrite = [&folder] { folder.put("text", "TWELVE bytes"); };
    using Change = std::function<void(const std::string& path, const struct stat& before)>;
    const std::tuple<const char*, bool, Change> cases[] = {
        {"written anew", true, [&](auto&, auto&) { rewrite(); }},
        {"and the time put back", true, [&](auto& path, auto& before) {
             rewrite();
             const struct timespec times[] = {before.st_atim, before.st_mtim};
             ::utimensat(AT_FDCWD, path.c_str(), times, 0);
         }},
        {"and its mode changed, which explains one time alone", true, [&](auto& path, auto&) {
             rewrite();
             ::chmod(path.c_str(), 0640);
         }},
        {"cut off", true, [](auto& path, auto&) { fs::resize_file(path, 5); }},
        {"read", false, [](auto& path, auto&) { std::ifstream(path).get(); }},
        {"removed", false, [](auto& path, auto&) { fs::remove(path); }},
        {"of another mode", false, [](auto& path, auto&) { ::chmod(path.c_str(), 0640); }},
        {"replaced", false, [&](auto& path, auto&) { fs::rename(folder.put("other", "other bytes."), path); }},
    };
    for (const auto& [rule, isChanged, change] : cases) {
        const std::string path = folder.put("text", "twelve bytes");
        struct stat before;
        ::stat(path.c_str(), &before);
        const auto stripe = *FileStripe::open(path);
        // The clock of the file system has ticked when a file written anew has another time.
        struct stat probe = before;
        while (probe.st_mtim.tv_nsec == before.st_mtim.tv_nsec)
            ::stat(folder.put("probe", "").c_str(), &probe);
        change(path, before);
        EXPECT_EQ(stripe->isUnchanged(), !isChanged) << rule;
    }
}

TEST(HostStripes, whatIsNoRegularFileIsUnreadable)
{
    const TestFolder folder;
    ::mkfifo(folder.path("fifo").c_str(), 0600);
    const std::string device = "/dev/null";
    for (const std::string& path : {folder.path(""), folder.path("fifo"), folder.path("nothing"), device}) {
        const auto stripe = FileStripe::open(path); // and doesn't wait for a writer
        ASSERT_FALSE(stripe) << path;
        EXPECT_TRUE(stripe.refusal().isUnusable()) << path;
    }
}

TEST(HostStripes, aWatchIsToldOfTheBlocksThatItsThreadReads)
{
    const TestFolder folder;
    const std::string path = folder.put("text", std::string(40000, 'x'));
    const auto read = [&path] { readAt<std::uint8_t>(**ByteFileStripe::open(path), 0, 40000); };
    std::string told;
    const auto note = [&told](std::uint64_t end, std::uint64_t size) {
        told += std::to_string(end) + "/" + std::to_string(size) + " ";
    };
    {
        const ReadWatch outer(note);
        {
            const ReadWatch newest([](std::uint64_t, std::uint64_t) {});
            read();
        }
        std::thread(read).join();
        EXPECT_EQ(told, "");
        read();
        EXPECT_EQ(told, "16384/40000 32768/40000 40000/40000 ");
    }
    read();
    EXPECT_EQ(told, "16384/40000 32768/40000 40000/40000 ");
}
