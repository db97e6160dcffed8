#include <host/streams/Compress.h>

#include <platform/ZlibFilter.h>

namespace Host {

std::vector<std::uint8_t> compressedBytes(const std::vector<std::uint8_t>& bytes) noexcept
{
    const Ref<BlockFilter> filter = ZlibFilter::createCompressorStream(0);
    std::vector<std::uint8_t> out;
    std::vector<std::uint8_t> block(65536);
    std::size_t produced = 0;
    for (std::size_t done = 0; done < bytes.size();) {
        std::size_t consumed = 0;
        if (!filter->process(bytes.data() + done, bytes.size() - done, block.data(), block.size(), &consumed, &produced))
            return {};
        out.insert(out.end(), block.begin(), block.begin() + std::ptrdiff_t(produced));
        done += consumed;
    }
    for (int state = 1; state == 1;) {
        state = filter->flush(block.data(), block.size(), &produced);
        out.insert(out.end(), block.begin(), block.begin() + std::ptrdiff_t(produced));
    }
    return out;
}

} // namespace Host
