#include <platform/MemInStrm.h>
#include <stripes/Convert.h>
#include <stripes/ElementSizeStripe.h>
#include <stripes/SubStripe.h>

#include <tests/support/LogCapture.h>
#include <tests/support/TestStripe.h>

#include <gtest/gtest.h>

using namespace Tests;
using Libraries::Files::PDF::SubStripe;
using ElementStripe = Libraries::Adapters::ElementSize::Stripe;
using Converter = Libraries::Files::PDF::Utils::Convert<std::uint32_t, std::uint8_t>;

namespace {

const std::string hundred(100, '.');

Ref<SubStripe> view(const Ref<Interfaces::Stripe>& base, std::uint64_t offset, std::uint64_t size)
{
    return make<SubStripe>(base, Mon::create(), offset, size);
}

std::string read(Interfaces::Stripe& stripe, std::uint64_t count)
{
    const std::vector<std::uint32_t> elements = readFrom(stripe, count);
    return std::string(elements.begin(), elements.end());
}

Ref<Converter> convert(Ref<Interfaces::Stream> source)
{
    return Converter::create(
        std::move(source), [](std::uint32_t c) { return encoding().byte(c); },
        [](std::uint8_t byte) { return encoding().codePoint(byte); });
}

class SharedBlock final : public ::Object, public virtual SharedMemory {
public:
    void* data() noexcept override { return bytes; }
    std::uint64_t size() const noexcept override { return sizeof(bytes); }
    unsigned char bytes[4] = {};
};

} // namespace

TEST(SubStripe, viewsShareOneStripeAndKeepTheirOwnPlaces)
{
    const Ref<TestStripe> base = make<TestStripe>(hundred + "0123456789abc");
    const Ref<SubStripe> first = view(base, 100, 10);
    const Ref<SubStripe> second = view(base, 110, 3);
    EXPECT_EQ(read(*first, 4) + read(*second, 2), "0123ab");
    base->seek(0);
    EXPECT_EQ(read(*first, 20), "456789");
}

TEST(SubStripe, failuresOfTheWrappedStripeComeThrough)
{
    LogCapture log;
    EXPECT_EQ(read(*view(make<TestStripe>(hundred), 95, 10), 10), ".....");
    EXPECT_EQ(log.take().size(), 1u) << "a view may reach beyond its stripe, and reads short there";
    EXPECT_EQ(read(*view(make<TestStripe>(hundred, Fault{.seek = 0}), 95, 5), 5), "");
    EXPECT_TRUE(log.take().empty());
    EXPECT_EQ(read(*view(make<TestStripe>(hundred, Fault{.read = 0}), 90, 5), 5), "");
    EXPECT_EQ(Error::get(), TestStripe::failureCode);
    EXPECT_EQ(log.take(), Lines{"Read from base 0h (0) of requested 5h (5); error: 7777h (30583)"});
}

TEST(ElementSizeStripe, standsOverBytesOnly)
{
    EXPECT_EQ(codeOf(ElementStripe::create(nullptr)), ErrNullArgument);
    for (const std::uint64_t width : {0u, 3u, 8u})
        EXPECT_EQ(codeOf(ElementStripe::create(make<TestStripe>("", Fault(), width))), ErrNotSupported) << width;
}

TEST(Convert, whatTheSourceDidNotDeliverStaysAndItsCodeToo)
{
    const Ref<Converter> converter = convert(make<TestStripe>("abc"));
    std::string bytes(5, '.');
    BufferDesc target = BufferDesc::plain(bytes.data());
    EXPECT_EQ(converter->read(target, 5, waitForever), 3u);
    EXPECT_EQ(bytes, "abc..");
    EXPECT_EQ(codeOf(convert(make<TestStripe>("abc", Fault{.read = 0}))->read(target, 3, waitForever)),
        TestStripe::failureCode);
    EXPECT_EQ(codeOf(convert(nullptr)), ErrNullArgument);
    EXPECT_EQ(codeOf(convert(converter)), ErrInvalidArgument) << "its elements are bytes";
}

TEST(Convert, sharedBlocksAreFoundByTheirIds)
{
    const Ref<Converter> converter = convert(make<TestStripe>("abcdef"));
    const Ref<SharedBlock> block = make<SharedBlock>();
    EXPECT_EQ(converter->shareOut(nullptr).id, 0u);
    for (std::uint64_t id = 15; id > 0; --id)
        EXPECT_EQ(converter->shareOut(block).id, id);
    EXPECT_EQ(converter->shareOut(block).id, 31u) << "the table doubles, id 0 is never given out";

    BufferDesc area;
    area.kind = BufferDesc::Shared;
    area.shared[3] = 15;
    EXPECT_EQ(converter->read(area, 1, waitForever), 1u);
    converter->shareIn({nullptr, 0, 0, 0, 15});
    EXPECT_EQ(converter->read(area, 1, waitForever), 0u) << "taken back";
    EXPECT_EQ(converter->shareOut(block).id, 15u);
}

TEST(MemoryStreams, anEmptyBlockIsAnEmptyStream)
{
    static int released = 0;
    const auto release = [](void* block, std::size_t) {
        ++released;
        Heap::free(block, Heap::Array, nullptr);
    };
    EXPECT_EQ(MemInStrm::create(Heap::alloc(0, Heap::Array, nullptr), 0, release)->seek(5), 0u);
    EXPECT_EQ(released, 1);
    EXPECT_FALSE(MemInStrm::create(nullptr, 0, release));
    EXPECT_EQ(released, 1);
}
