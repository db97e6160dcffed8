#include "Input.h"
#include "StripeModels.h"

#include <host/files/MemoryStripe.h>
#include <platform/MemInStrm.h>
#include <platform/MemoryStream.h>
#include <stripes/ByteElements.h>
#include <stripes/Convert.h>
#include <stripes/ElementSizeStripe.h>
#include <stripes/SubStripe.h>

// The target `stripes`: the first bytes choose a stripe and what it holds, all others are operations on it, which a
// plain model answers too. The two must agree on results, codes, places and what was moved.

namespace Fuzz {

namespace {

using Libraries::Files::PDF::ByteElements;
using Libraries::Files::PDF::SubStripe;
using ElementStripe = Libraries::Adapters::ElementSize::Stripe;
using Encoding = ::Libraries::Strings::Encodings::ANSI::Windows_1252;
using Converter = Libraries::Files::PDF::Utils::Convert<std::uint32_t, std::uint8_t>;

std::vector<std::uint8_t> bytesFrom(Input& input)
{
    const std::string_view text = input.text(input.byte());
    return std::vector<std::uint8_t>(text.begin(), text.end());
}

Ref<MemInStrm> memoryOf(const std::vector<std::uint8_t>& bytes)
{
    const auto release = [](void* block, std::size_t) { std::free(block); };
    void* block = std::malloc(bytes.size() + 1);
    Mem::copy(bytes.data(), block, bytes.size());
    return MemInStrm::create(block, bytes.size(), release);
}

Ref<MemoryStream> streamOf(const std::vector<std::uint8_t>& bytes)
{
    Ref<MemoryStream> stream = MemoryStream::create(0, 1);
    stream->append(bytes.data(), bytes.size());
    stream->seek(0);
    return stream;
}

// Two stripes over one block, with places of their own.
void exerciseShared(Input& input)
{
    const std::vector<std::uint8_t> bytes = bytesFrom(input);
    Ref<MemInStrm> first = memoryOf(bytes);
    const Ref<MemInStrm> second = first->share();
    BytesModel firstModel(bytes, Access::ReadOnly);
    BytesModel secondModel(bytes, Access::ReadOnly);
    while (!input.isAtEnd()) {
        if (first && input.byte() == 0)
            first = nullptr;
        if (first)
            operate(*first, firstModel, input);
        operate(*second, secondModel, input);
    }
}

void exerciseView(Input& input)
{
    const std::vector<std::uint8_t> bytes = bytesFrom(input);
    std::vector<std::uint32_t> elements;
    for (const std::uint8_t byte : bytes)
        elements.push_back(Encoding::toCodePoint(byte));
    constexpr std::uint64_t most = std::uint64_t(1) << 62; // offset and size are added, and not tested
    const std::uint64_t offset = std::min(input.anyNumber(), most);
    const std::uint64_t size = std::min(input.anyNumber(), most);
    const auto view = make<SubStripe>(make<Host::MemoryStripe>(bytes), Mon::create(), offset, size);
    ViewModel model(elements, offset, size);
    while (!input.isAtEnd())
        operate(*view, model, input);
}

// A block that is named by a handle, or by the description itself.
class SharedBlock final : public ::Object, public virtual SharedMemory {
public:
    explicit SharedBlock(std::size_t size) : _bytes(size) {}
    void* data() noexcept override { return _bytes.data(); }
    std::uint64_t size() const noexcept override { return _bytes.size(); }

private:
    std::vector<std::uint8_t> _bytes;
};

// The converter, with buffers of all kinds: shared blocks are given out and taken back in any order.
class Conversion {
public:
    explicit Conversion(const std::vector<std::uint8_t>& bytes)
        : _elements(ElementStripe::create(MemoryStream::create(0, 1))), _model(bytes, Access::Growing)
    {
        for (const std::uint8_t byte : bytes) {
            std::uint32_t element = Encoding::toCodePoint(byte);
            BufferDesc area = BufferDesc::plain(&element);
            _elements->write(area, 1, waitForever);
        }
        _elements->seek(0);
        _converter = Converter::create(
            _elements, [](std::uint32_t c) { return Encoding::toByte(c); },
            [](std::uint8_t byte) { return Encoding::toCodePoint(byte); });
    }

    void operate(Input& input)
    {
        switch (input.byte() % 4) {
        case 0: return shareOut(input);
        case 1: return shareIn(input);
        case 2: return move(input, false);
        default: return move(input, true);
        }
    }

private:
    void shareOut(Input& input)
    {
        const Ref<SharedBlock> block = make<SharedBlock>(input.byte());
        const SharedHandle handle = _converter->shareOut(block);
        require(handle.id != 0 && handle.memory == block && handle.counter == ++_handles, "a handle names its block");
        require(_blocks.emplace(handle.id, block).second, "an id that is in use isn't given out again");
    }

    void shareIn(Input& input)
    {
        SharedHandle handle;
        handle.id = input.anyNumber();
        require(_converter->shareIn(handle).id == 0, "a handle that was taken back is all zeros");
        _blocks.erase(handle.id);
    }

    // Reads or writes through one kind of description. What is moved are bytes, of the value of `mark` in a write.
    void move(Input& input, bool isWriting)
    {
        const std::uint64_t count = input.byte();
        const std::uint64_t offset = input.byte() % 16;
        const std::uint8_t mark = input.byte();
        std::vector<std::uint8_t> plain(count + offset, mark);
        BufferDesc area = BufferDesc::plain(plain.data());
        area.offset = offset;
        std::uint8_t* memory = plain.data();
        bool isUsable = true;
        if (const std::uint8_t kind = input.byte() % 4; kind == 0) {
            area = {};
            isUsable = false;
        } else if (kind > 1) {
            area = {};
            area.kind = BufferDesc::Shared;
            area.offset = offset;
            area.shared[3] = input.anyNumber();
            const auto found = _blocks.find(area.shared[3]);
            isUsable = found != _blocks.end() && found->second->size() >= offset
                && found->second->size() - offset >= count;
            memory = isUsable ? static_cast<std::uint8_t*>(found->second->data()) : nullptr;
            if (kind == 3 && found != _blocks.end())
                area.memory = found->second;
        }
        Error::set(0);
        if (!isUsable) {
            const std::uint64_t moved = isWriting ? _converter->write(area, count, waitForever)
                                                  : _converter->read(area, count, waitForever);
            require(moved == 0 && Error::get() == ErrNoResource, "a buffer that can't take the count moves nothing");
            return;
        }
        if (isWriting)
            write(area, memory + offset, count, mark);
        else
            read(area, memory + offset, count);
        require(_elements->tell() == _model.tell(), "the source stands behind what was moved");
    }

    void write(BufferDesc& area, std::uint8_t* memory, std::uint64_t count, std::uint8_t mark)
    {
        std::fill_n(memory, count, mark);
        require(_converter->write(area, count, waitForever) == _model.write(memory, count), "a write moves all bytes");
    }

    void read(BufferDesc& area, const std::uint8_t* memory, std::uint64_t count)
    {
        if (count % 5 == 0) {
            _elements->seek(0);
            _model.seek(0);
        }
        std::vector<std::uint8_t> expected(count);
        const std::uint64_t got = _model.read(expected.data(), count);
        require(_converter->read(area, count, waitForever) == got, "a read moves what there is");
        require(Mem::equal(memory, expected.data(), got), "bytes come back as they were");
    }

    const Ref<Interfaces::Stripe> _elements;
    Ref<Converter> _converter;
    BytesModel _model;
    std::map<std::uint64_t, Ref<SharedBlock>> _blocks;
    std::uint64_t _handles = 0;
};

void exercise(Input& input)
{
    switch (input.byte() % 7) {
    case 0:
        return exerciseShared(input);
    case 1:
        return exerciseView(input);
    case 2: {
        const std::vector<std::uint8_t> bytes = bytesFrom(input);
        return operateAll(*streamOf(bytes), BytesModel(bytes, Access::Growing), input);
    }
    case 3: {
        const std::vector<std::uint8_t> bytes = bytesFrom(input);
        return operateAll(*ElementStripe::create(streamOf(bytes)), ElementsModel(bytes, Access::Growing), input);
    }
    case 4: {
        const std::vector<std::uint8_t> bytes = bytesFrom(input);
        return operateAll(*ElementStripe::create(memoryOf(bytes)), ElementsModel(bytes, Access::ReadOnly), input);
    }
    case 5: {
        const std::vector<std::uint8_t> bytes = bytesFrom(input);
        return operateAll(*make<ByteElements>(streamOf(bytes)), HeldModel(bytes), input);
    }
    default: {
        Conversion conversion(bytesFrom(input));
        while (!input.isAtEnd())
            conversion.operate(input);
    }
    }
}

} // namespace

} // namespace Fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    Fuzz::exercise(input);
    return 0;
}
