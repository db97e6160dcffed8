#include <stripes/BaseStripe.h>
#include <stripes/ElementSizeStripe.h>

#include "../support/TestStripe.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Tests;
using BaseStripe = Libraries::Adapters::Base::Stripe;
using ElementStripe = Libraries::Adapters::ElementSize::Stripe;

namespace {

// Notes what it is asked, and does all that it is asked to the full.
class Recorder final : public ::Object, public virtual Interfaces::Stripe {
public:
    std::uint64_t elementSize() const noexcept override { return 1; }
    std::uint64_t read(BufferDesc&, std::uint64_t count, std::uint32_t) noexcept override
    {
        return note("read", count);
    }
    std::uint64_t write(BufferDesc&, std::uint64_t count, std::uint32_t) noexcept override
    {
        return note("write", count);
    }
    std::uint64_t skipRead(std::uint64_t count, std::uint32_t) noexcept override { return note("skipRead", count); }
    std::uint64_t skipWrite(std::uint64_t count, std::uint32_t) noexcept override { return note("skipWrite", count); }
    std::uint64_t size() const noexcept override { return note("size", 40); }
    std::uint64_t capacity() const noexcept override { return note("capacity", 80); }
    std::uint64_t limit() const noexcept override { return note("limit", 120); }
    std::uint64_t resize(std::uint64_t count) noexcept override { return note("resize", count); }
    std::uint64_t seek(std::uint64_t position) noexcept override { return note("seek", position); }
    std::uint64_t tell() const noexcept override { return note("tell", 160); }
    SharedHandle shareOut(Ref<SharedMemory> memory) noexcept override
    {
        return {std::move(memory), 0, note("shareOut", 1), 0, 0};
    }
    SharedHandle shareIn(SharedHandle handle) noexcept override
    {
        handle.counter = note("shareIn", handle.id);
        return handle;
    }

    mutable std::string last;

private:
    std::uint64_t note(const char* operation, std::uint64_t number) const
    {
        last = operation + (" " + std::to_string(number));
        return number;
    }
};

using Operation = std::function<std::uint64_t(Interfaces::Stripe&)>;
BufferDesc area;

// What is asked of an adapter, its name, and the number that reaches the source through one of bytes and through
// one of elements: a count, or a measure that the source answers.
const std::tuple<Operation, const char*, std::uint64_t, std::uint64_t> operations[] = {
    {[](auto& stripe) { return stripe.read(area, 3, waitForever); }, "read ", 3, 12},
    {[](auto& stripe) { return stripe.write(area, 4, waitForever); }, "write ", 4, 16},
    {[](auto& stripe) { return stripe.skipRead(5, waitForever); }, "skipRead ", 5, 20},
    {[](auto& stripe) { return stripe.skipWrite(6, waitForever); }, "skipWrite ", 6, 24},
    {[](auto& stripe) { return stripe.resize(7); }, "resize ", 7, 28},
    {[](auto& stripe) { return stripe.seek(8); }, "seek ", 8, 32},
    {[](auto& stripe) { return stripe.size(); }, "size ", 40, 40},
    {[](auto& stripe) { return stripe.capacity(); }, "capacity ", 80, 80},
    {[](auto& stripe) { return stripe.limit(); }, "limit ", 120, 120},
    {[](auto& stripe) { return stripe.tell(); }, "tell ", 160, 160},
};

} // namespace

TEST(Adapters, everyOperationReachesTheSourceInItsOwnElements)
{
    const Ref<Recorder> source = make<Recorder>();
    const std::pair<Ref<Interfaces::Stripe>, std::uint64_t> adapters[]
        = {{make<BaseStripe>(source), 1}, {ElementStripe::create(source), 4}};
    for (const auto& [adapter, scale] : adapters) {
        EXPECT_EQ(adapter->elementSize(), scale);
        for (const auto& [ask, name, ofBytes, ofElements] : operations) {
            const std::uint64_t number = scale == 1 ? ofBytes : ofElements;
            EXPECT_EQ(ask(*adapter), number / scale) << name << scale;
            EXPECT_EQ(source->last, name + std::to_string(number));
        }
        EXPECT_EQ(adapter->shareOut(nullptr).counter, 1u);
        SharedHandle handle;
        handle.id = 9;
        EXPECT_EQ(adapter->shareIn(handle).counter, 9u) << "handles pass as they are";
    }
}

TEST(Adapters, aSizeWhoseBytesCanNotBeCountedIsRefused)
{
    const Ref<Recorder> source = make<Recorder>();
    Error::set(0);
    EXPECT_EQ(ElementStripe::create(source)->resize(~std::uint64_t(0) / 4 + 1), 10u);
    EXPECT_EQ(Error::get(), ErrOutOfRange);
    EXPECT_EQ(source->last, "size 40") << "the source is not resized";
}

TEST(Stripe, whatAnApplicationDoesNotOverrideIsNotOffered)
{
    const Ref<TestStripe> bare = make<TestStripe>("1234567");
    EXPECT_EQ(bare->capacity() + bare->limit(), 14u);
    const std::pair<Operation, std::uint64_t> refused[] = {
        {[](auto& stripe) { return stripe.skipRead(1, waitForever); }, 0},
        {[](auto& stripe) { return stripe.skipWrite(1, waitForever); }, 0},
        {[](auto& stripe) { return stripe.resize(9); }, 7},
        {[](auto& stripe) { return stripe.shareOut(nullptr).id; }, 0},
        {[](auto& stripe) { return stripe.shareIn({}).id; }, 0},
    };
    for (const auto& [ask, answer] : refused) {
        Error::set(0);
        EXPECT_EQ(ask(*bare), answer);
        EXPECT_EQ(Error::get(), ErrNotSupported);
    }
}
