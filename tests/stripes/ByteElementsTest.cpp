#include <stripes/ByteElements.h>

#include <platform/MemoryStream.h>
#include <stripes/ElementSizeStripe.h>

#include "../support/TestStripe.h"

#include <gtest/gtest.h>

#include <random>

using namespace Tests;
using Libraries::Files::PDF::ByteElements;

namespace {

using Elements = std::vector<std::uint32_t>;

std::uint64_t write(Interfaces::Stripe& stripe, Elements elements)
{
    BufferDesc area = BufferDesc::plain(elements.data());
    return stripe.write(area, elements.size(), waitForever);
}

// Elements of files, and now and then one that stands for no byte.
Elements someElements(std::mt19937& random, unsigned oneIn)
{
    Elements elements(random() % 6000);
    for (std::uint32_t& element : elements)
        element = random() % oneIn == 0 ? 0x10000 + random() % 256 : encoding().codePoint(std::uint8_t(random()));
    return elements;
}

} // namespace

TEST(ByteElements, areWhatAStripeOfElementsIsWhateverIsWritten)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        std::mt19937 random(seed);
        const Ref<ByteElements> held = make<ByteElements>(MemoryStream::create(0, 1));
        const Ref<Interfaces::Stripe> wide
            = Libraries::Adapters::ElementSize::Stripe::create(MemoryStream::create(0, 1));
        const unsigned oneIn = seed % 2 == 0 ? 2000 : ~0u;
        for (int step = 0; step < 60; ++step) {
            const std::uint64_t number = random() % 20000;
            switch (random() % 5) {
            case 0: {
                const Elements elements = someElements(random, oneIn);
                EXPECT_EQ(write(*held, elements), write(*wide, elements));
                break;
            }
            case 1: EXPECT_EQ(readFrom(*held, number), readFrom(*wide, number)); break;
            case 2: EXPECT_EQ(held->seek(number), wide->seek(number)); break;
            case 3: EXPECT_EQ(held->resize(number), wide->resize(number)); break;
            default: EXPECT_EQ(held->resize(~number), wide->resize(~number));
            }
            EXPECT_EQ(held->limit(), wide->limit());
            EXPECT_EQ(held->size(), wide->size());
            EXPECT_EQ(held->tell(), wide->tell());
        }
        EXPECT_EQ(held->hasBytes(), oneIn == ~0u);
        EXPECT_EQ(bytesOf(held), bytesOf(wide));
    }
}
