#include <host/files/FileOutput.h>

#include <tests/support/FlateData.h>
#include <tests/support/LogCapture.h>
#include <tests/support/TestStripe.h>
#include <tests/support/TestFolder.h>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>

using namespace Tests;
using namespace Host;

namespace {

bool write(FileOutput& out, std::u32string text)
{
    BufferDesc area = BufferDesc::plain(text.data());
    return out.write(area, text.size(), waitForever) == text.size();
}

bool writeBytes(FileOutput& out, const std::string& bytes)
{
    return out.writeBytes(bytes.data(), bytes.size()) == bytes.size();
}

mode_t modeOf(const std::string& path)
{
    struct stat found = {};
    ::stat(path.c_str(), &found);
    return found.st_mode & 07777;
}

// Root may do everything, so that what is refused to others shows only as one of them.
class AsNobody {
public:
    AsNobody() { _isSwitched = ::geteuid() == 0 && ::seteuid(65534) == 0; }
    ~AsNobody() { EXPECT_TRUE(!_isSwitched || ::seteuid(0) == 0); }

private:
    bool _isSwitched;
};

// The words with which a target is refused; empty when it isn't. Nothing is left in either case.
std::string refusalOf(const std::string& path)
{
    const auto out = FileOutput::create(path);
    return out ? "" : out.refusal().message;
}

} // namespace

TEST(FileOutput, theTargetChangesOnlyWithTheCommit)
{
    const TestFolder folder;
    const std::string path = folder.put("target", "old");
    ::chmod(path.c_str(), 0604);
    const auto keeper = *FileStripe::open(path);
    auto out = *FileOutput::create(path);
    const std::string bytes = incompressible(256000);
    const std::vector<std::uint32_t> text = TestStripe(bytes).elements;
    ASSERT_TRUE(write(*out, std::u32string(text.begin(), text.end())));
    EXPECT_EQ(folder.get("target"), "old");
    EXPECT_EQ((*out->reopen())->size(), 256000u);
    ASSERT_TRUE(out->commit());
    EXPECT_TRUE(folder.get("target") == bytes);
    EXPECT_EQ(out->count(), 256000u);
    EXPECT_EQ(modeOf(path), mode_t(0604));
    EXPECT_TRUE(keeper->isUnchanged());
    EXPECT_FALSE(write(*out, U"more\n") || out->commit());
    EXPECT_EQ(folder.count(), 1);
    EXPECT_EQ(folder.get("target").size(), 256000u);

    const mode_t mask = ::umask(027);
    ASSERT_TRUE((*FileOutput::create(folder.path("new")))->commit());
    ::umask(mask);
    EXPECT_EQ(modeOf(folder.path("new")), mode_t(0640)) << "a new file has the mode of new files";
}

TEST(FileOutput, bytesAndElementsComeOutInTheirOrder)
{
    const TestFolder folder;
    auto out = *FileOutput::create(folder.path("target"));
    std::string expected;
    for (const std::size_t size : {0, 1, 65535, 1, 65536, 3, 65533, 200000, 65535}) {
        const std::string bytes = incompressible(size);
        ASSERT_TRUE(writeBytes(*out, bytes) && write(*out, U"\u20AC"));
        expected += bytes + "\x80";
    }
    EXPECT_EQ(out->count(), expected.size());
    ASSERT_TRUE(out->commit());
    EXPECT_TRUE(folder.get("target") == expected);
    EXPECT_FALSE(writeBytes(*out, "more"));
}

TEST(FileOutput, linksAreFollowedToTheTarget)
{
    const TestFolder folder;
    folder.put("target", "old");
    fs::create_directory(folder.path("deep"));
    const std::pair<const char*, const char*> links[] = {
        {"first", "deep/second"}, {"deep/second", "../target"}, {"dangling", "later"}, {"loop", "loop"}};
    for (const auto& [link, target] : links)
        fs::create_symlink(target, folder.path(link));
    for (const char* link : {"first", "dangling"}) {
        auto out = *FileOutput::create(folder.path(link));
        ASSERT_TRUE(write(*out, U"new") && out->commit());
        EXPECT_TRUE(fs::is_symlink(folder.path(link)));
    }
    EXPECT_EQ(folder.get("target") + folder.get("later"), "newnew");
    EXPECT_NE(refusalOf(folder.path("loop")), "");
}

TEST(FileOutput, whatCantBeReplacedIsRefusedBeforehand)
{
    const TestFolder folder;
    fs::create_directory(folder.path("folder"));
    fs::create_symlink("folder", folder.path("link"));
    ::mkfifo(folder.path("fifo").c_str(), 0666);
    struct sockaddr_un address = {AF_UNIX, {}};
    folder.path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    ASSERT_EQ(::bind(socket.number(), reinterpret_cast<struct sockaddr*>(&address), sizeof address), 0);
    const auto count = folder.count();
    const std::pair<std::string, const char*> cases[] = {{"folder", "is a folder"}, {"link", "is a folder"},
        {"fifo", "is a FIFO"}, {"socket", "is a socket"}, {"/dev/full", "is a device"}, {"", "doesn't name a file"},
        {"none/file", "its folder can't be opened: No such file or directory"}};
    for (const auto& [name, words] : cases)
        EXPECT_EQ(refusalOf(folder.path(name)), words);
    EXPECT_EQ(folder.count(), count);
}

TEST(FileOutput, whatTheCallerMayNotWriteIsRefused)
{
    const TestFolder folder;
    ::chmod(folder.put("locked", "old").c_str(), 0444);
    fs::create_directory(folder.path("closed"));
    ::chmod(folder.path("closed").c_str(), 0555);
    ::chmod(folder.put("others", "old").c_str(), 0666);
    fs::create_directory(folder.path("unlisted"));
    ::chmod(folder.path("unlisted").c_str(), 0333);
    const bool isRoot = ::geteuid() == 0;
    {
        const AsNobody nobody;
        EXPECT_EQ(refusalOf(folder.path("locked")), "is not writable: Permission denied");
        EXPECT_EQ(refusalOf(folder.path("closed/new")), "no file can be created in its folder: Permission denied");
        // A folder that may not be read can't be synced either.
        EXPECT_EQ(*(*FileOutput::create(folder.path("unlisted/new")))->commit(), Durability::Unknown);
        if (isRoot) {
            const auto committed = (*FileOutput::create(folder.path("others")))->commit();
            ASSERT_FALSE(committed);
            EXPECT_NE(committed.refusal().message.find("owner of the file that it replaces"), std::string::npos);
        }
    }
    EXPECT_EQ(folder.get("others"), "old");
    EXPECT_EQ(folder.count(), 4);
    ::chmod(folder.path("unlisted").c_str(), 0777);
}

TEST(FileOutput, afterAFailureNothingIsLeft)
{
    const TestFolder folder;
    const std::string path = folder.put("target", "old");
    { // An element without a byte
        auto out = *FileOutput::create(path);
        EXPECT_TRUE(write(*out, U"fine"));
        EXPECT_EQ(codeOf(write(*out, U"\x0141")), ErrInvalidArgument);
        EXPECT_FALSE(write(*out, U"fine") || writeBytes(*out, "fine") || out->reopen());
        EXPECT_EQ(out->commit().refusal().code, ErrInvalidArgument);
        EXPECT_EQ(folder.count(), 1); // also while the output is still there
    }
    { // The target has become something else
        auto out = *FileOutput::create(path);
        fs::remove(path);
        fs::create_directory(path);
        EXPECT_EQ(out->commit().refusal().message, "is a folder");
        fs::remove(path);
        folder.put("target", "old");
    }
    { auto abandoned = *FileOutput::create(path); }
    EXPECT_EQ(folder.get("target"), "old");
    EXPECT_EQ(folder.count(), 1);
}
