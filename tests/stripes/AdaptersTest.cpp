#include <stripes/BaseStripe.h>
#include <stripes/ElementSizeStripe.h>

#include <tests/support/TestStripe.h>

#include <gtest/gtest.h>

#include <functional>

using namespace Tests;
using BaseStripe = Libraries::Adapters::Base::Stripe;
using ElementStripe = Libraries::Adapters::ElementSize::Stripe;

namespace {

// Answers with what it is asked for, and another number besides for each operation.
class Source final : public ::Object, public virtual Interfaces::Stripe {
public:
    std::uint64_t elementSize() const noexcept override { return 1; }
    std::uint64_t read(BufferDesc&, std::uint64_t count, std::uint32_t) noexcept override { return count + 4; }
    std::uint64_t write(BufferDesc&, std::uint64_t count, std::uint32_t) noexcept override { return count + 8; }
    std::uint64_t skipRead(std::uint64_t count, std::uint32_t) noexcept override { return count + 12; }
    std::uint64_t skipWrite(std::uint64_t count, std::uint32_t) noexcept override { return count + 16; }
    std::uint64_t resize(std::uint64_t count) noexcept override { return count + 20; }
    std::uint64_t seek(std::uint64_t position) noexcept override { return position + 24; }
    std::uint64_t size() const noexcept override { return 40; }
    std::uint64_t capacity() const noexcept override { return 80; }
    std::uint64_t limit() const noexcept override { return 120; }
    std::uint64_t tell() const noexcept override { return 160; }
    SharedHandle shareOut(Ref<SharedMemory> memory) noexcept override { return {std::move(memory), 0, 1, 0, 0}; }
    SharedHandle shareIn(SharedHandle handle) noexcept override { return {nullptr, 0, handle.id, 0, 0}; }
};

using Operation = std::function<std::uint64_t(Interfaces::Stripe&)>;
BufferDesc area;

// What is asked of an adapter, for how many elements, and what the source has to say to that in bytes.
const std::tuple<Operation, std::uint64_t, std::uint64_t> operations[] = {
    {[](auto& stripe) { return stripe.read(area, 3, waitForever); }, 3, 4},
    {[](auto& stripe) { return stripe.write(area, 3, waitForever); }, 3, 8},
    {[](auto& stripe) { return stripe.skipRead(3, waitForever); }, 3, 12},
    {[](auto& stripe) { return stripe.skipWrite(3, waitForever); }, 3, 16},
    {[](auto& stripe) { return stripe.resize(3); }, 3, 20},
    {[](auto& stripe) { return stripe.seek(3); }, 3, 24},
    {[](auto& stripe) { return stripe.size(); }, 0, 40},
    {[](auto& stripe) { return stripe.capacity(); }, 0, 80},
    {[](auto& stripe) { return stripe.limit(); }, 0, 120},
    {[](auto& stripe) { return stripe.tell(); }, 0, 160},
};

} // namespace

TEST(Adapters, everyOperationReachesTheSourceInItsOwnElements)
{
    const Ref<Source> source = make<Source>();
    const std::pair<Ref<Interfaces::Stripe>, std::uint64_t> adapters[]
        = {{make<BaseStripe>(source), 1}, {ElementStripe::create(source), 4}};
    for (const auto& [adapter, scale] : adapters) {
        EXPECT_EQ(adapter->elementSize(), scale);
        for (const auto& [ask, count, answer] : operations)
            EXPECT_EQ(ask(*adapter), count + answer / scale) << answer;
        EXPECT_EQ(adapter->shareOut(nullptr).counter, 1u);
        EXPECT_EQ(adapter->shareIn({nullptr, 0, 0, 0, 9}).counter, 9u) << "handles pass as they are";
    }
}

TEST(Adapters, aSizeWhoseBytesCanNotBeCountedIsRefused)
{
    Error::set(0);
    EXPECT_EQ(ElementStripe::create(make<Source>())->resize(~std::uint64_t(0) / 4 + 1), 10u);
    EXPECT_EQ(Error::get(), ErrOutOfRange);
}

TEST(Stripe, whatAnApplicationDoesNotOverrideIsNotOffered)
{
    const Ref<TestStripe> bare = make<TestStripe>("1234567");
    EXPECT_EQ(bare->capacity() + bare->limit(), 14u);
    Error::set(0);
    EXPECT_EQ(bare->resize(9), 7u);
    EXPECT_EQ(Error::get(), ErrNotSupported);
    Error::set(0);
    EXPECT_EQ(bare->shareIn({}).id, 0u);
    EXPECT_EQ(Error::get(), ErrNotSupported);
}
