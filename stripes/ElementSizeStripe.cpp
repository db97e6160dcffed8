#include <stripes/ElementSizeStripe.h>

namespace Libraries::Adapters::ElementSize {

Ref<Interfaces::Stripe> Stripe::create(Ref<Interfaces::Stripe> source) noexcept
{
    if (!source) {
        Error::set(ErrNullArgument);
        return nullptr;
    }
    const std::uint64_t width = source->elementSize();
    if (width == 0 || _elementSize % width != 0) {
        Error::set(ErrNotSupported);
        return nullptr;
    }
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
