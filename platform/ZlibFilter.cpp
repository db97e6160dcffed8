#include <platform/ZlibFilter.h>

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <limits>

namespace {

// One call of zlib over a block, whose lengths zlib keeps in 32 bits.
template <class Step>
int run(z_stream& stream, const void* in, std::size_t inLength, void* out, std::size_t outCapacity,
    std::size_t& consumed, std::size_t& produced, Step step)
{
    constexpr std::size_t limit = std::numeric_limits<uInt>::max();
    const uInt available = static_cast<uInt>(std::min(inLength, limit));
    const uInt room = static_cast<uInt>(std::min(outCapacity, limit));
    stream.next_in = static_cast<const Bytef*>(in);
    stream.avail_in = available;
    stream.next_out = static_cast<Bytef*>(out);
    stream.avail_out = room;
    const int result = step(stream);
    consumed = available - stream.avail_in;
    produced = room - stream.avail_out;
    return result;
}

bool isFailure(int result)
{
    // Z_BUF_ERROR only says that there was nothing to do.
    return result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR;
}

class Decompressor final : public Object, public virtual BlockFilter {
public:
    Decompressor() noexcept : _isUsable(inflateInit(&_stream) == Z_OK) {}
    ~Decompressor() noexcept override { inflateEnd(&_stream); }
    bool isUsable() const noexcept { return _isUsable; }

    bool process(const void* in, std::size_t inLength, void* out, std::size_t outCapacity, std::size_t* consumed,
        std::size_t* produced) noexcept override
    {
        *consumed = *produced = 0;
        if (_isAtEnd || inLength == 0)
            return true;
        _isBegun = true;
        const int result = run(_stream, in, inLength, out, outCapacity, *consumed, *produced,
            [](z_stream& stream) { return inflate(&stream, Z_NO_FLUSH); });
        _isAtEnd = result == Z_STREAM_END;
        return !isFailure(result);
    }

    int flush(void* out, std::size_t outCapacity, std::size_t* produced) noexcept override
    {
        *produced = 0;
        if (_isAtEnd || !_isBegun)
            return 0;
        std::size_t consumed = 0;
        const int result = run(_stream, nullptr, 0, out, outCapacity, consumed, *produced,
            [](z_stream& stream) { return inflate(&stream, Z_SYNC_FLUSH); });
        _isAtEnd = result == Z_STREAM_END;
        if (_isAtEnd)
            return 0;
        return *produced && !isFailure(result) ? 1 : 2;
    }

private:
    z_stream _stream{};
    bool _isUsable;
    bool _isBegun = false;
    bool _isAtEnd = false;
};

template <class Filter>
Ref<BlockFilter> ifUsable(Ref<Filter> filter)
{
    return filter->isUsable() ? Ref<BlockFilter>(std::move(filter)) : nullptr;
}

} // namespace

Ref<BlockFilter> ZlibFilter::createDecompressorStream() noexcept
{
    return ifUsable(make<Decompressor>());
}

#ifndef FILES_PDF_LIBDEFLATE // else FastCompressor.cpp has it

namespace {

class Compressor final : public Object, public virtual BlockFilter {
public:
    explicit Compressor(int level) noexcept : _isUsable(deflateInit(&_stream, level) == Z_OK) {}
    ~Compressor() noexcept override { deflateEnd(&_stream); }
    bool isUsable() const noexcept { return _isUsable; }

    bool process(const void* in, std::size_t inLength, void* out, std::size_t outCapacity, std::size_t* consumed,
        std::size_t* produced) noexcept override
    {
        return !isFailure(run(_stream, in, inLength, out, outCapacity, *consumed, *produced,
            [](z_stream& stream) { return deflate(&stream, Z_NO_FLUSH); }));
    }

    int flush(void* out, std::size_t outCapacity, std::size_t* produced) noexcept override
    {
        std::size_t consumed = 0;
        const int result = run(_stream, nullptr, 0, out, outCapacity, consumed, *produced,
            [](z_stream& stream) { return deflate(&stream, Z_FINISH); });
        if (result == Z_STREAM_END)
            return 0;
        return result == Z_OK || (result == Z_BUF_ERROR && outCapacity > 0 && *produced > 0) ? 1 : 2;
    }

private:
    z_stream _stream{};
    bool _isUsable;
};

} // namespace

Ref<BlockFilter> ZlibFilter::createCompressorStream(std::size_t level) noexcept
{
    if (level > Z_BEST_COMPRESSION)
        return nullptr;
    return ifUsable(make<Compressor>(level == 0 ? Z_DEFAULT_COMPRESSION : static_cast<int>(level)));
}

#endif
