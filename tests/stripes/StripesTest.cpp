#include <platform/Mem.h>
#include <platform/MemInStrm.h>
#include <platform/MemoryStream.h>
#include <platform/Windows_1252.h>
#include <stripes/Convert.h>
#include <stripes/ElementSizeStripe.h>
#include <stripes/SubStripe.h>

#include "../support/LogCapture.h"
#include "../support/TestStripe.h"

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
    std::vector<std::uint32_t> elements(count);
    BufferDesc area = BufferDesc::plain(elements.data());
    elements.resize(stripe.read(area, count, waitForever));
    return std::string(elements.begin(), elements.end());
}

Ref<Converter> convert(Ref<Interfaces::Stream> source)
{
    using Libraries::Strings::Encodings::ANSI::Windows_1252;
    const Ref<Windows_1252> encoding = make<Windows_1252>(true);
    return Converter::create(
        std::move(source), [encoding](std::uint32_t c) { return encoding->byte(c); },
        [encoding](std::uint8_t byte) { return encoding->codePoint(byte); });
}

} // namespace

TEST(SubStripe, viewsShareOneStripeAndKeepTheirOwnPlaces)
{
    const Ref<TestStripe> base = make<TestStripe>(hundred + "0123456789abc");
    const Ref<SubStripe> first = view(base, 100, 10);
    const Ref<SubStripe> second = view(base, 110, 3);
    EXPECT_EQ(read(*first, 4), "0123");
    EXPECT_EQ(read(*second, 2), "ab");
    base->seek(0);
    EXPECT_EQ(read(*first, 20), "456789");
    EXPECT_EQ(first->seek(11), 10u) << "a seek beyond the end stops there";
    EXPECT_EQ(first->tell(), 10u);
    EXPECT_EQ(first->seek(2), 2u);
    EXPECT_EQ(read(*first, 1), "2");
    EXPECT_EQ(first->size(), 10u);
}

TEST(SubStripe, theEndIsToldOnlyByAViewWithOffset0)
{
    const Ref<TestStripe> base = make<TestStripe>(hundred);
    const std::tuple<std::uint64_t, std::uint64_t, std::uint32_t> cases[] = {
        {0, 10, ErrOutOfRange}, {0, 0, ErrOutOfRange}, {50, 10, 0}};
    for (const auto& [offset, size, code] : cases) {
        const Ref<SubStripe> at = view(base, offset, size);
        at->seek(size);
        Error::set(0);
        EXPECT_EQ(read(*at, 0), "");
        EXPECT_EQ(Error::get(), 0u);
        EXPECT_EQ(read(*at, 5), "");
        EXPECT_EQ(Error::get(), code) << offset << " " << size;
        BufferDesc none;
        EXPECT_EQ(at->read(none, 0, waitForever), 0u);
        EXPECT_EQ(Error::get(), std::uint32_t(ErrInvalidArgument));
    }
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
    EXPECT_EQ(log.take(), std::vector<std::string>{"Read from base 0h (0) of requested 5h (5); error: 7777h (30583)"});
    const Ref<SubStripe> readOnly = view(make<TestStripe>(hundred), 0, 7);
    BufferDesc area = BufferDesc::plain(nullptr);
    Error::set(0);
    EXPECT_EQ(readOnly->write(area, 1, waitForever) + readOnly->skipRead(1, 0) + readOnly->skipWrite(1, 0), 0u);
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNotSupported));
    EXPECT_EQ(readOnly->resize(99), 7u);
}

TEST(ElementSizeStripe, fourBytesMakeAnElementAndTheRestIsCutOff)
{
    const Ref<MemoryStream> bytes = MemoryStream::create(0, 1);
    const Ref<Interfaces::Stripe> elements = ElementStripe::create(bytes);
    std::uint32_t two[] = {0x20AC, 7};
    BufferDesc area = BufferDesc::plain(two);
    EXPECT_EQ(elements->write(area, 2, waitForever), 2u);
    EXPECT_EQ(bytes->size(), 8u);
    bytes->append("xy", 2);
    EXPECT_EQ(elements->size(), 2u);
    EXPECT_EQ(elements->seek(1), 1u);
    EXPECT_EQ(read(*elements, 5), "\7") << "the partial element is not delivered";
    EXPECT_EQ(bytes->tell(), 10u);
    EXPECT_EQ(elements->seek(3), 2u);

    Error::set(0);
    EXPECT_FALSE(ElementStripe::create(nullptr));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNullArgument));
    for (const std::uint64_t width : {0u, 3u, 8u}) {
        Error::set(0);
        EXPECT_FALSE(ElementStripe::create(make<TestStripe>("", Fault(), width)));
        EXPECT_EQ(Error::get(), std::uint32_t(ErrNotSupported)) << width;
    }
}

TEST(Convert, bytesCrossOverAndBackAndCodesOfTheSourceStay)
{
    const Ref<Interfaces::Stripe> elements = ElementStripe::create(MemoryStream::create(0, 1));
    const Ref<Converter> converter = convert(elements);
    unsigned char bytes[256];
    for (unsigned i = 0; i < 256; ++i)
        bytes[i] = static_cast<unsigned char>(i);
    BufferDesc area = BufferDesc::plain(bytes);
    EXPECT_EQ(converter->write(area, 256, waitForever), 256u);
    elements->seek(0x80);
    std::uint32_t euro = 0;
    BufferDesc one = BufferDesc::plain(&euro);
    elements->read(one, 1, waitForever);
    EXPECT_EQ(euro, 0x20ACu);
    elements->seek(0);
    unsigned char back[300];
    std::fill(std::begin(back), std::end(back), 0xEE);
    BufferDesc target = BufferDesc::plain(back);
    EXPECT_EQ(converter->read(target, 300, waitForever), 256u);
    EXPECT_TRUE(std::equal(bytes, bytes + 256, back));
    EXPECT_EQ(back[256], 0xEE) << "what the source didn't deliver stays as it was";
    const Ref<Converter> failing = convert(make<TestStripe>("abc", Fault{.read = 0}));
    EXPECT_EQ(failing->read(target, 3, waitForever), 0u);
    EXPECT_EQ(Error::get(), TestStripe::failureCode);
}

TEST(Convert, refusesWhatItCannotUse)
{
    Error::set(0);
    EXPECT_FALSE(convert(nullptr));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNullArgument));
    const Ref<Converter> converter = convert(make<TestStripe>("abc"));
    EXPECT_FALSE(convert(converter)) << "its elements are bytes";
    EXPECT_EQ(Error::get(), std::uint32_t(ErrInvalidArgument));
    BufferDesc none;
    EXPECT_EQ(converter->read(none, 1, waitForever), 0u);
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNoResource));
}

namespace {

class SharedBlock final : public ::Object, public virtual SharedMemory {
public:
    void* data() noexcept override { return bytes; }
    std::uint64_t size() const noexcept override { return sizeof(bytes); }
    unsigned char bytes[4] = {};
};

} // namespace

TEST(Convert, sharedBlocksAreFoundByTheirIds)
{
    const Ref<Converter> converter = convert(make<TestStripe>("abcdef"));
    const Ref<SharedBlock> block = make<SharedBlock>();
    EXPECT_EQ(converter->shareOut(nullptr).id, 0u);
    const SharedHandle handle = converter->shareOut(block);
    EXPECT_EQ(handle.id, 15u);
    EXPECT_EQ(handle.counter, 1u);
    for (std::uint64_t id = 14; id > 0; --id)
        EXPECT_EQ(converter->shareOut(block).id, id);
    EXPECT_EQ(converter->shareOut(block).id, 31u) << "the table doubles, id 0 is never given out";

    BufferDesc area;
    area.kind = BufferDesc::Shared;
    area.offset = 1;
    area.shared[3] = handle.id;
    EXPECT_EQ(converter->read(area, 4, waitForever), 0u) << "more than the block holds";
    EXPECT_EQ(converter->read(area, 3, waitForever), 3u);
    EXPECT_EQ(block->bytes[3], 'c');
    converter->shareIn(handle);
    area.memory = nullptr;
    EXPECT_EQ(converter->read(area, 1, waitForever), 0u) << "taken back";
    EXPECT_EQ(converter->shareOut(block).id, handle.id);
}

TEST(MemoryStreams, anEmptyBlockIsAnEmptyStream)
{
    static int released = 0;
    {
        const Ref<MemInStrm> stream
            = MemInStrm::create(Heap::alloc(0, Heap::Array, nullptr), 0, [](void* block, std::size_t) {
                  ++released;
                  Heap::free(block, Heap::Array, nullptr);
              });
        EXPECT_EQ(stream->size(), 0u);
        EXPECT_EQ(stream->seek(5), 0u);
    }
    EXPECT_EQ(released, 1);
    EXPECT_FALSE(MemInStrm::create(nullptr, 0, [](void*, std::size_t) { ++released; }));
    EXPECT_EQ(released, 1);
    const Ref<MemoryStream> grown = MemoryStream::create(3, 1);
    grown->seek(2);
    grown->append("abc", 3);
    EXPECT_EQ(grown->size(), 5u);
    EXPECT_TRUE(Mem::equal(grown->data(), "\0\0abc", 5));
    grown->resize(4);
    EXPECT_EQ(grown->tell(), 4u);
}
