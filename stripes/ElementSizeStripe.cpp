#include <stripes/ElementSizeStripe.h>

#include <platform/Reporter.h>

namespace Libraries::Adapters::ElementSize {

Ref<Interfaces::Stripe> Stripe::create(Ref<Interfaces::Stripe> source) noexcept
{
    if (!source)
        return refuse(ErrNullArgument);
    const std::uint64_t width = source->elementSize();
    if (width == 0 || _elementSize % width != 0)
        return refuse(ErrNotSupported);
    return make<Stripe>(std::move(source));
}

SharedHandle Stripe::shareOut(Ref<SharedMemory> memory) noexcept
{
    return _source->shareOut(std::move(memory));
}

SharedHandle Stripe::shareIn(SharedHandle handle) noexcept
{
    return _source->shareIn(std::move(handle));
}

std::uint64_t Stripe::read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    BufferDesc copy = area;
    return _source->read(copy, count * _elementSize, timeout) / _elementSize;
}

std::uint64_t Stripe::write(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept
{
    BufferDesc copy = area;
    return _source->write(copy, count * _elementSize, timeout) / _elementSize;
}

std::uint64_t Stripe::skipRead(std::uint64_t count, std::uint32_t timeout) noexcept
{
    return _source->skipRead(count * _elementSize, timeout) / _elementSize;
}

std::uint64_t Stripe::skipWrite(std::uint64_t count, std::uint32_t timeout) noexcept
{
    return _source->skipWrite(count * _elementSize, timeout) / _elementSize;
}

std::uint64_t Stripe::size() const noexcept
{
    return _source->size() / _elementSize;
}

std::uint64_t Stripe::capacity() const noexcept
{
    return _source->capacity() / _elementSize;
}

std::uint64_t Stripe::limit() const noexcept
{
    return _source->limit() / _elementSize;
}

std::uint64_t Stripe::resize(std::uint64_t count) noexcept
{
    if (count > ~std::uint64_t(0) / _elementSize) {
        Error::set(ErrOutOfRange);
        return size();
    }
    return _source->resize(count * _elementSize) / _elementSize;
}

std::uint64_t Stripe::seek(std::uint64_t position) noexcept
{
    return _source->seek(position * _elementSize) / _elementSize;
}

std::uint64_t Stripe::tell() const noexcept
{
    return _source->tell() / _elementSize;
}

} // namespace Libraries::Adapters::ElementSize
