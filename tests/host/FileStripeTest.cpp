#include <host/FileStripe.h>
#include <host/MemoryStripe.h>

#include "TestFolder.h"

#include <gtest/gtest.h>

#include <platform/Windows_1252.h>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Tests;
using namespace Host;

namespace {

// Longer than two blocks, and no two places near each other are alike.
std::string longText()
{
    std::string text;
    for (unsigned i = 0; text.size() < 40000; ++i)
        text += std::to_string(i) + static_cast<char>(i);
    return text;
}

template <class Element>
std::vector<Element> readAt(Interfaces::Stripe& stripe, std::uint64_t position, std::uint64_t count)
{
    std::vector<Element> elements(count, Element(-1));
    BufferDesc area = BufferDesc::plain(elements.data());
    stripe.seek(position);
    elements.resize(stripe.read(area, count, waitForever));
    return elements;
}

// Single elements, runs over the limits of blocks, backwards, and over the end.
template <class Element>
void expectReads(Interfaces::Stripe& stripe, const std::vector<Element>& all)
{
    ASSERT_EQ(stripe.size(), all.size());
    for (std::uint64_t position = all.size(); position-- > 0;)
        ASSERT_EQ(readAt<Element>(stripe, position, 1), std::vector<Element>{all[position]}) << position;
    for (const std::uint64_t position : {0, 16383, 16384, 30000}) {
        const auto got = readAt<Element>(stripe, position, 20000);
        const auto end = std::min<std::uint64_t>(position + 20000, all.size());
        EXPECT_EQ(got, std::vector<Element>(all.begin() + long(position), all.begin() + long(end))) << position;
        EXPECT_EQ(stripe.tell(), end);
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
    const std::string text = longText();
    const std::string path = folder.put("text", text);
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    std::vector<std::uint32_t> elements;
    for (const std::uint8_t byte : bytes)
        elements.push_back(Libraries::Strings::Encodings::ANSI::Windows_1252(true).codePoint(byte));
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

TEST(HostStripes, aFileThatShrinksFailsToBeReadThere)
{
    const TestFolder folder;
    const std::string path = folder.put("text", std::string(60000, 'x'));
    const auto stripe = *FileStripe::open(path);
    fs::resize_file(path, 20000);
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, 0, 60000).size(), 20000u);
    EXPECT_EQ(Error::get(), ErrNoResource);
    EXPECT_TRUE(readAt<std::uint32_t>(*stripe, 20000, 1).empty());
    EXPECT_TRUE(readAt<std::uint32_t>(*stripe, 50000, 1).empty());
    EXPECT_EQ(stripe->trouble(), "has become shorter while it was read");
    EXPECT_EQ(stripe->size(), 60000u);
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, 19999, 1).size(), 1u);
}

TEST(HostStripes, whatAFileGrowsByIsNotRead)
{
    const TestFolder folder;
    const std::string path = folder.put("text", "twelve bytes");
    const auto stripe = *FileStripe::open(path);
    std::ofstream(path, std::ios::app) << " and more";
    EXPECT_EQ(readAt<std::uint32_t>(*stripe, 0, 20).size(), 12u);
    EXPECT_TRUE(readAt<std::uint32_t>(*stripe, 12, 1).empty());
}

TEST(HostStripes, aFileTellsWhetherItWasChangedInPlace)
{
    const TestFolder folder;
    const auto isUnchangedAfter = [&folder](auto change) {
        const std::string path = folder.put("text", "twelve bytes");
        struct stat before;
        ::stat(path.c_str(), &before);
        const auto stripe = *FileStripe::open(path);
        // The clock of the file system has ticked when a file written anew has another time.
        struct stat probe = before;
        while (probe.st_mtim.tv_nsec == before.st_mtim.tv_nsec)
            ::stat(folder.put("probe", "").c_str(), &probe);
        change(path, before);
        return stripe->isUnchanged();
    };
    const auto rewrite = [&folder](const std::string&, const struct stat&) { folder.put("text", "TWELVE bytes"); };
    EXPECT_FALSE(isUnchangedAfter(rewrite));
    EXPECT_FALSE(isUnchangedAfter([&](const std::string& path, const struct stat& before) {
        rewrite(path, before);
        const struct timespec times[] = {before.st_atim, before.st_mtim}; // as if nothing had happened
        ::utimensat(AT_FDCWD, path.c_str(), times, 0);
    }));
    EXPECT_FALSE(isUnchangedAfter([&](const std::string& path, const struct stat& before) {
        rewrite(path, before);
        ::chmod(path.c_str(), 0640); // explains another time of change, but not of writing
    }));
    EXPECT_FALSE(isUnchangedAfter([](const std::string& path, const auto&) { fs::resize_file(path, 5); }));
    EXPECT_TRUE(isUnchangedAfter([](const std::string& path, const auto&) { std::ifstream(path).get(); }));
    EXPECT_TRUE(isUnchangedAfter([](const std::string& path, const auto&) { fs::remove(path); }));
    EXPECT_TRUE(isUnchangedAfter([](const std::string& path, const auto&) { ::chmod(path.c_str(), 0640); }));
    EXPECT_TRUE(isUnchangedAfter([&folder](const std::string& path, const auto&) {
        fs::rename(folder.put("other", "other bytes."), path); // another file has taken the name
    }));
}

TEST(HostStripes, whatIsNoRegularFileIsUnreadable)
{
    const TestFolder folder;
    ::mkfifo(folder.path("fifo").c_str(), 0600);
    const std::string device = "/dev/null";
    for (const std::string& path : {folder.path(""), folder.path("fifo"), folder.path("nothing"), device}) {
        const auto stripe = FileStripe::open(path); // and doesn't wait for a writer
        ASSERT_FALSE(stripe) << path;
        EXPECT_TRUE(stripe.refusal().isUnreadable) << path;
    }
}
