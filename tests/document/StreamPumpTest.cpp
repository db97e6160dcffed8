#include <document/StreamPump.h>
#include <platform/Object.h>

#include "../support/Streams.h"

#include <gtest/gtest.h>

using namespace Tests;
using Libraries::Files::PDF::pump;
using Libraries::Files::PDF::PumpEnd;

namespace {

// Passes bytes on in whole portions, at most 40,000 at once, adds "abc" at the end, and fails at the call
// of the given number, counted from 0.
class TestFilter final : public ::Object, public virtual BlockFilter {
public:
    explicit TestFilter(std::size_t portion, std::uint64_t failing = Fault::never)
        : _portion(portion), _failing(failing)
    {
    }

    bool process(const void* in, std::size_t inLength, void* out, std::size_t outCapacity, std::size_t* consumed,
        std::size_t* produced) noexcept override
    {
        const std::size_t most = std::min({inLength, outCapacity, std::size_t(40000)});
        *consumed = *produced = most - most % _portion;
        std::copy_n(static_cast<const char*>(in), *produced, static_cast<char*>(out));
        return _failing-- != 0;
    }
    int flush(void* out, std::size_t, std::size_t* produced) noexcept override
    {
        const std::string piece = _isFlushing ? "c" : "ab";
        *produced = piece.copy(static_cast<char*>(out), piece.size());
        return _failing-- == 0 ? 2 : std::exchange(_isFlushing, true) ? 0 : 1;
    }

private:
    const std::size_t _portion;
    std::uint64_t _failing;
    bool _isFlushing = false;
};

} // namespace

TEST(Pump, stopsWhereACallFails)
{
    enum Side { Source, Filter, Target };
    const auto convert = PumpEnd::Convert, write = PumpEnd::Write, plain = PumpEnd::WriteUnfiltered;
    // Where calls fail one after another, whether there is a filter, and where each of them ends the work.
    const std::tuple<Side, bool, std::vector<PumpEnd>> cases[] = {
        {Source, true, {3, PumpEnd::Read}},
        {Source, false, {3, PumpEnd::Read}},
        {Target, false, {3, plain}},
        {Filter, true, {convert, convert, convert, convert, convert, PumpEnd::Flush, PumpEnd::Flush}},
        {Target, true, {write, write, write, write, write, PumpEnd::WriteFlushed, PumpEnd::WriteFlushed}},
    };
    const std::string bytes = incompressible(150000);
    for (const auto& [failing, isFiltered, ends] : cases)
        for (std::size_t n = 0; n <= ends.size(); ++n) {
            SCOPED_TRACE(std::to_string(failing) + " " + std::to_string(n));
            const Ref<TestStripe> source = narrow(bytes, failing == Source ? Fault{.read = n} : Fault{});
            const Ref<TestStripe> target = narrow("", failing == Target ? Fault{.write = n} : Fault{});
            const auto filter = make<TestFilter>(1, failing == Filter ? n : Fault::never);
            const auto result = pump(*source, bytes.size(), isFiltered ? filter.get() : nullptr, *target);
            const bool isDone = n == ends.size();
            ASSERT_EQ(result.end, isDone ? PumpEnd::Done : ends[n]);
            EXPECT_EQ(target->bytes() == bytes + (isFiltered ? "abc" : ""), isDone);
            EXPECT_EQ(result.code, result.end == PumpEnd::Read ? TestStripe::failureCode : 0u);
            EXPECT_EQ(result.asked, result.end != PumpEnd::Read ? 0u : n < 2 ? 65536u : 150000u - 131072u);
        }
}

// Deliberate: of bytes that a filter left over, it sees what the moving makes of them.
TEST(Pump, showsTheFilterTheNewBytesAndThenThoseFromTheFront)
{
    const std::string block = incompressible(65535);
    const std::string bytes = block + "!" + block;
    const Ref<TestStripe> target = narrow("");
    EXPECT_EQ(pump(*narrow(bytes), bytes.size(), make<TestFilter>(3).get(), *target).end, PumpEnd::Done);
    // The last byte of the first block stays in front of the second, of which 39,999 bytes go through.
    EXPECT_TRUE(target->bytes() == block + block.substr(0, 39999) + block.substr(39998, 25536) + "abc");
}
