#include <stripes/ByteElements.h>

#include <platform/MemoryStream.h>

#include <tests/support/TestStripe.h>

#include <gtest/gtest.h>

using namespace Tests;
using Libraries::Files::PDF::ByteElements;

TEST(ByteElements, areWidenedByTheFirstThatStandsForNoByte)
{
    constexpr std::uint64_t most = ~std::uint64_t(0) / 4; // whose bytes can be counted
    const Ref<ByteElements> held = make<ByteElements>(MemoryStream::create(0, 1));
    std::vector<std::uint32_t> elements = TestStripe(std::string(10000, '\x80')).elements; // over several blocks
    for (const bool isWide : {false, true}) {
        const std::uint64_t start = isWide ? 9000 : 0;
        elements[9000] = isWide ? 0x10000 : 'x';
        BufferDesc area = BufferDesc::plain(&elements[start]);
        held->seek(start);
        EXPECT_EQ(held->write(area, elements.size() - start, waitForever), elements.size() - start);
        EXPECT_EQ(held->hasBytes(), !isWide);
        EXPECT_EQ(held->tell(), elements.size());
        held->seek(0);
        EXPECT_EQ(readFrom(*held, 20000), elements);
        EXPECT_EQ(held->limit(), most);
        Error::set(0);
        EXPECT_EQ(held->resize(most + 1), elements.size());
        EXPECT_EQ(Error::get(), ErrOutOfRange);
    }
}
