#include <platform/ElementReader.h>

#include <tests/support/TestStripe.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

// Shows one run of bytes, whatever is asked for.
class LyingStripe final : public TestStripe, public virtual Interfaces::ShownBytes {
public:
    LyingStripe(const std::string& bytes, ByteRun run) : TestStripe(bytes), _run(run) {}
    ByteRun bytesAround(std::uint64_t) noexcept override { return _run; }

private:
    const ByteRun _run;
};

} // namespace

TEST(ElementReader, bytesThatDontHoldThePlaceOrLieBehindTheEndDontCount)
{
    constexpr std::uint64_t endless = ~std::uint64_t(0);
    const std::uint8_t bytes[] = {'a', 'b', 'c', 'd'};
    const std::pair<ByteRun, std::size_t> runs[] = {{{nullptr, 0, 4}, 0}, {{bytes, 1, 4}, 0}, {{bytes, endless, 4}, 0},
        {{bytes, 0, 2}, 2}, {{bytes, 0, 4}, 3}, {{bytes, 0, endless}, 3}};
    for (const auto& [run, count] : runs) {
        const Ref<LyingStripe> stripe = make<LyingStripe>("abc", run);
        ElementReader elements(*stripe);
        std::size_t got = 0;
        for (std::uint32_t c = 0; elements.next(c); ++got)
            EXPECT_EQ(c, bytes[got]);
        EXPECT_EQ(got, count) << run.start << ' ' << run.length;
        EXPECT_EQ(elements.tell(), count);
        EXPECT_TRUE(elements.settle());
    }
}
