#include <document/StreamPump.h>
#include <platform/Object.h>

#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
using Libraries::Files::PDF::pump;
using Libraries::Files::PDF::PumpEnd;

namespace {

// Passes bytes on in threes, at most 39,999 at once, and adds "abc" at the end.
class TestFilter final : public ::Object, public virtual BlockFilter {
public:
    bool process(const void* in, std::size_t inLength, void* out, std::size_t outCapacity, std::size_t* consumed,
        std::size_t* produced) noexcept override
    {
        const std::size_t most = std::min({inLength, outCapacity, std::size_t(40000)});
        *consumed = *produced = most - most % 3;
        std::copy_n(static_cast<const char*>(in), *produced, static_cast<char*>(out));
        return true;
    }
    int flush(void* out, std::size_t, std::size_t* produced) noexcept override
    {
        const std::string piece = _isFlushing ? "c" : "ab";
        *produced = piece.copy(static_cast<char*>(out), piece.size());
        return std::exchange(_isFlushing, true) ? 0 : 1;
    }

private:
    bool _isFlushing = false;
};

} // namespace

TEST(Pump, stopsAtAFailingWrite)
{
    // Whether there is a filter, and where each failing write ends the work.
    const std::pair<bool, std::vector<PumpEnd>> cases[] = {{false, {PumpEnd::WriteUnfiltered, PumpEnd::Done}},
        {true, {PumpEnd::Write, PumpEnd::WriteFlushed, PumpEnd::WriteFlushed, PumpEnd::Done}}};
    for (const auto& [isFiltered, ends] : cases)
        for (std::size_t n = 0; n < ends.size(); ++n) {
            const Ref<TestFilter> filter = isFiltered ? make<TestFilter>() : nullptr;
            EXPECT_EQ(pump(*narrow("abcdef"), 6, filter.get(), *narrow("", {.write = n})).end, ends[n]) << n;
        }
}

// Deliberate: of bytes that a filter left over, it sees what the moving makes of them.
TEST(Pump, showsTheFilterTheNewBytesAndThenThoseFromTheFront)
{
    const std::string block = incompressible(65535);
    const std::string bytes = block + "!" + block;
    const Ref<TestStripe> target = narrow("");
    EXPECT_EQ(pump(*narrow(bytes), bytes.size(), make<TestFilter>().get(), *target).end, PumpEnd::Done);
    // The last byte of the first block stays in front of the second, of which 39,999 bytes go through.
    EXPECT_TRUE(target->bytes() == block + block.substr(0, 39999) + block.substr(39998, 25536) + "abc");
}
