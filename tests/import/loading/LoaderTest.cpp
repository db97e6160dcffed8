#include <import/Loader.h>

#include <tests/support/PackedText.h>
#include <tests/support/TestFolder.h>

#include <values/Object.h>

#include <gtest/gtest.h>

using namespace Tests;

// This program isn't linked with the library that it loads.
TEST(LoadedDoor, opensWhatTheCoreRefuses)
{
    const TestFolder folder;
    const std::string path = folder.put("in.pdf", PackedText().pages());
    for (int times = 0; times < 2; ++times) {
        const auto opened = Import::openAny(Import::openIfInstalled, path);
        ASSERT_TRUE(opened) << opened.refusal().message;
        EXPECT_EQ(opened->why, "cross-reference streams, object streams");
        EXPECT_EQ(opened->report->objectStreams, 1u);
        EXPECT_TRUE(opened->opened.document->getCatalog());
    }
}

TEST(LoadedDoor, isMissedInWords)
{
    const auto missing = Import::loadDoor("libfiles-pdf-nothing.so.0");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.refusal().reason, Host::Reason::Unsupported);
    EXPECT_EQ(missing.refusal().message, "needs libfiles-pdf-import, which isn't installed");
    const auto other = Import::loadDoor("libfiles-pdf-host.so.0");
    ASSERT_FALSE(other);
    EXPECT_TRUE(other.refusal().message.starts_with("needs libfiles-pdf-import, which is of another version than "));
}
