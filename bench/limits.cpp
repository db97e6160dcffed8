// What the machine allows: the loops that no library can do without, over the same files and nothing else.

#include <bench/Program.h>

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

using Bench::Job;

constexpr std::size_t blockSize = 65536;
using Block = std::array<std::uint8_t, blockSize>;

// The stored data of the streams, of files as the generator writes them. The data of a stream is
// passed over by its length, which comes first in the dictionary.
template <class Visitor>
void forEachStream(const Bench::Bytes& bytes, Visitor visit)
{
    constexpr std::string_view dictionary = " obj\n<< /Length ";
    constexpr std::string_view data = ">>\nstream\n";
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (std::size_t at = text.find(dictionary); at != text.npos; at = text.find(dictionary, at)) {
        const std::size_t length = std::strtoull(text.data() + at + dictionary.size(), nullptr, 10);
        const std::size_t start = text.find(data, at) + data.size();
        visit(bytes.data() + start, length);
        at = start + length;
    }
}

// Moves data through zlib, in blocks on both sides, and hands what comes out to `take`.
template <class Step, class Take>
void pump(z_stream& stream, const std::uint8_t* data, std::size_t length, Step step, Take take)
{
    static Block out;
    int result = Z_OK;
    for (std::size_t done = 0; result == Z_OK;) {
        const std::size_t count = std::min(blockSize, length - done);
        stream.next_in = const_cast<Bytef*>(data + done);
        stream.avail_in = static_cast<uInt>(count);
        done += count;
        do {
            stream.next_out = out.data();
            stream.avail_out = blockSize;
            result = step(stream, done == length ? Z_FINISH : Z_NO_FLUSH);
            take(out.data(), blockSize - stream.avail_out);
        } while (stream.avail_out == 0 && result != Z_STREAM_END);
        if (result == Z_BUF_ERROR && done < length)
            result = Z_OK; // it asks for the next block
    }
    if (result != Z_STREAM_END)
        Bench::fail("zlib refuses the data");
}

void inflateStreams(Job& job)
{
    Bench::DecodedData decoded;
    forEachStream(job.bytes, [&](const std::uint8_t* data, std::size_t length) {
        // A stream of the zlib form begins so; the few others are stored as they are.
        if (length == 0 || data[0] != 0x78)
            return decoded.add(data, length, job.isChecked);
        z_stream stream{};
        inflateInit(&stream);
        pump(stream, data, length, [](z_stream& z, int) { return inflate(&z, Z_NO_FLUSH); },
            [&](const std::uint8_t* block, std::size_t count) { decoded.add(block, count, job.isChecked); });
        inflateEnd(&stream);
    });
    decoded.print(job.isChecked);
}

void deflateStreams(Job& job)
{
    std::uint64_t size = 0;
    forEachStream(job.bytes, [&](const std::uint8_t* data, std::size_t length) {
        z_stream stream{};
        deflateInit(&stream, Z_DEFAULT_COMPRESSION);
        pump(stream, data, length, [](z_stream& z, int flush) { return deflate(&z, flush); },
            [&](const std::uint8_t*, std::size_t count) { size += count; });
        deflateEnd(&stream);
    });
    Bench::print("stored_bytes", size);
}

// Measures work on `count` things within the process: the reading of the file isn't part of it.
template <class Work>
void measure(std::size_t count, Work work)
{
    const double start = Bench::processorTime();
    const std::uint64_t sum = work();
    Bench::print("ns_each", (Bench::processorTime() - start) / static_cast<double>(count));
    Bench::print("sum", sum);
}

// Bytes to elements of four bytes and back, a block at a time, by tables as large as the library's.
void convert(Job& job)
{
    std::array<std::uint32_t, 256> elementOfByte;
    std::array<std::uint8_t, 0x2123> byteOfElement{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        elementOfByte[byte] = byte < 128 || byte >= 160 ? byte : 0x2000 + byte;
        byteOfElement[elementOfByte[byte]] = static_cast<std::uint8_t>(byte);
    }
    measure(job.bytes.size(), [&] {
        static std::array<std::uint32_t, blockSize> elements;
        static Block back;
        std::uint64_t sum = 0;
        for (std::size_t done = 0; done < job.bytes.size(); done += blockSize) {
            const std::size_t count = std::min(blockSize, job.bytes.size() - done);
            for (std::size_t i = 0; i < count; ++i)
                elements[i] = elementOfByte[job.bytes[done + i]];
            for (std::size_t i = 0; i < count; ++i)
                back[i] = byteOfElement[elements[i]];
            sum += back[count - 1];
        }
        return sum;
    });
}

class Source {
public:
    virtual ~Source() = default;
    virtual bool read(std::uint32_t& element) = 0;
};

class MemorySource final : public Source {
public:
    explicit MemorySource(const Bench::Bytes& bytes) : _bytes(bytes) {}
    bool read(std::uint32_t& element) override
    {
        if (_position == _bytes.size())
            return false;
        element = _bytes[_position++];
        return true;
    }

private:
    const Bench::Bytes& _bytes;
    std::size_t _position = 0;
};

// A second class, without which the compiler would know the one that there is and call it directly.
class EmptySource final : public Source {
public:
    bool read(std::uint32_t&) override { return false; }
};

std::unique_ptr<Source> makeSource(const Bench::Bytes& bytes)
{
    if (bytes.empty())
        return std::make_unique<EmptySource>();
    return std::make_unique<MemorySource>(bytes);
}

void readSingly(Job& job)
{
    const std::unique_ptr<Source> source = makeSource(job.bytes);
    measure(job.bytes.size(), [&source] {
        std::uint64_t sum = 0;
        for (std::uint32_t element = 0; source->read(element);)
            sum += element;
        return sum;
    });
}

const std::vector<Bench::Operation> operations = {
    {"inflate", inflateStreams},
    {"deflate", deflateStreams},
    {"elements", convert},
    {"reads", readSingly},
};

} // namespace

int main(int argc, char** argv)
{
    return Bench::runProgram(argc, argv, operations);
}
