#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;

TEST(StoredSizes, countEachStreamForItselfAndTellWhereItsDataIs)
{
    const std::string long100 = "<< /Length 100 >>\nstream\n" + std::string(10, 'x') + "\nendstream";
    const auto document = Tests::open(PdfText().pages().stream(3, "12345").object(4, long100).object(5, long100));
    const auto size = PDF::fileSizeOf(document);
    EXPECT_EQ(PDF::storedSizes(document).inFile, 5u + 100 + 100) << size;
    EXPECT_EQ(PDF::storedSizes(document).held, 0u);
    document->streamData(streamOf(document), false);
    EXPECT_EQ(PDF::storedSizes(document).inFile, 205u) << "looking at data doesn't move it";
    ASSERT_TRUE(document->cacheStreams());
    EXPECT_EQ(PDF::storedSizes(document).inFile, 0u);
    EXPECT_EQ(PDF::storedSizes(document).held, 205u);
    EXPECT_EQ(PDF::storedSizes(nullptr).held, 0u);
}
