#pragma once

#include <platform/Heap.h>
#include <platform/Reporter.h>
#include <platform/Stripe.h>
#include <stripes/ShHelper.h>

#include <algorithm>
#include <functional>

namespace Libraries::Files::PDF::Utils {

// A stream of narrow elements `E` over a stream of wide ones `I`, converted one by one through two
// functions: from `I` to `E` in reading, the other way in writing. Functions of a class of their own are
// known to the compiler in the loops. It holds no data: a short count of the source is passed on as it
// is. One object serves one conversion at a time.
template <class I, class E, class ReadFunction = std::function<E(I)>, class WriteFunction = std::function<I(E)>>
class Convert final : public ::Object, public virtual Interfaces::Stream {
public:
    // Null with `ErrNullArgument` for a null source, with `ErrInvalidArgument` for one whose elements
    // are not as wide as `I`.
    static Ref<Convert> create(Ref<Interfaces::Stream> source, ReadFunction read, WriteFunction write) noexcept
    {
        if (!source)
            return refuse(ErrNullArgument);
        if (source->elementSize() != sizeof(I))
            return refuse(ErrInvalidArgument);
        return make<Convert>(std::move(source), std::move(read), std::move(write));
    }

    Convert(Ref<Interfaces::Stream> source, ReadFunction read, WriteFunction write) noexcept
        : _source(std::move(source)), _read(std::move(read)), _write(std::move(write)), _shared(make<ShHelper>())
    {
    }

    // Interfaces::Data
    std::uint64_t elementSize() const noexcept override { return sizeof(E); }
    SharedHandle shareOut(Ref<SharedMemory> memory) noexcept override { return _shared->shareOut(std::move(memory)); }
    SharedHandle shareIn(SharedHandle handle) noexcept override { return _shared->shareIn(std::move(handle)); }

    // Interfaces::Stream. A description that can't take the count gives 0 with `ErrNoResource`;
    // otherwise the slot holds what the source left in it.
    std::uint64_t read(BufferDesc& description, std::uint64_t count, std::uint32_t timeout) noexcept override
    {
        BufferDesc area = description;
        if (!isUsable(area, count))
            return 0;
        Elements elements(count);
        BufferDesc plain = BufferDesc::plain(elements.data);
        const std::uint64_t got = _source->read(plain, count, timeout);
        const std::uint32_t code = Error::get();
        auto* target = reinterpret_cast<E*>(ShHelper::memoryOf(area));
        for (std::uint64_t i = 0; i < std::min(got, count); ++i)
            target[i] = _read(elements.data[i]);
        Error::set(code);
        return got;
    }

    std::uint64_t write(BufferDesc& description, std::uint64_t count, std::uint32_t timeout) noexcept override
    {
        BufferDesc area = description;
        if (!isUsable(area, count))
            return 0;
        Elements elements(count);
        const auto* bytes = reinterpret_cast<const E*>(ShHelper::memoryOf(area));
        for (std::uint64_t i = 0; i < count; ++i)
            elements.data[i] = _write(bytes[i]);
        BufferDesc plain = BufferDesc::plain(elements.data);
        return _source->write(plain, count, timeout);
    }

private:
    // The temporary array of one call.
    struct Elements {
        explicit Elements(std::uint64_t count) noexcept
            : data(static_cast<I*>(Heap::alloc(count * sizeof(I), Heap::Array, __builtin_return_address(0))))
        {
        }
        Elements(const Elements&) = delete;
        Elements& operator=(const Elements&) = delete;
        ~Elements() noexcept { Heap::free(data, Heap::Array, __builtin_return_address(0)); }
        I* const data;
    };

    static constexpr std::uint64_t maxElements = ~std::uint64_t(0) / sizeof(I); // whose bytes can be counted

    bool isUsable(BufferDesc& area, std::uint64_t count) noexcept
    {
        return (count <= maxElements && _shared->isUsable(area, count)) || refuse(ErrNoResource);
    }

    const Ref<Interfaces::Stream> _source;
    const ReadFunction _read;
    const WriteFunction _write;
    const Ref<ShHelper> _shared;
};

} // namespace Libraries::Files::PDF::Utils
