#include <platform/ZlibFilter.h>

#include <libdeflate.h>

#include <algorithm>
#include <cstdint>
#include <vector>

// The compressor of `ZlibFilter` by libdeflate, which takes only what is there as a whole: it collects the
// bytes of its stream and compresses them when it is flushed.

namespace {

using Bytes = std::vector<std::uint8_t>;

class Compressor final : public Object, public virtual BlockFilter {
public:
    explicit Compressor(int level) noexcept : _compressor(libdeflate_alloc_compressor(level)) {}
    ~Compressor() noexcept override { libdeflate_free_compressor(_compressor); }
    bool isUsable() const noexcept { return _compressor; }

    bool process(const void* in, std::size_t inLength, void*, std::size_t, std::size_t* consumed,
        std::size_t* produced) noexcept override
    {
        const auto* bytes = static_cast<const std::uint8_t*>(in);
        _input.insert(_input.end(), bytes, bytes + inLength);
        *consumed = inLength;
        *produced = 0;
        return true;
    }

    int flush(void* out, std::size_t outCapacity, std::size_t* produced) noexcept override
    {
        if (_output.empty() && !compress())
            return 2;
        *produced = std::min(outCapacity, _output.size() - _given);
        std::copy_n(_output.data() + _given, *produced, static_cast<std::uint8_t*>(out));
        _given += *produced;
        return _given < _output.size() ? 1 : 0;
    }

private:
    bool compress() noexcept
    {
        _output.resize(libdeflate_zlib_compress_bound(_compressor, _input.size()));
        _output.resize(libdeflate_zlib_compress(
            _compressor, _input.data(), _input.size(), _output.data(), _output.size()));
        Bytes().swap(_input);
        return !_output.empty();
    }

    libdeflate_compressor* const _compressor;
    Bytes _input; // until it is compressed
    Bytes _output;
    std::size_t _given = 0; // how much of the output is out
};

} // namespace

Ref<BlockFilter> ZlibFilter::createCompressorStream(std::size_t level) noexcept
{
    constexpr std::size_t maxLevel = 9; // as zlib counts
    constexpr std::size_t usualLevel = 6;
    if (level > maxLevel)
        return nullptr;
    Ref<Compressor> filter = make<Compressor>(static_cast<int>(level == 0 ? usualLevel : level));
    return filter->isUsable() ? Ref<BlockFilter>(std::move(filter)) : nullptr;
}
