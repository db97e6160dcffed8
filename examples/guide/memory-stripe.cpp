// Opens a PDF file that is in memory, through a stripe of the program's own.

#include <document/Document.h>
#include <platform/Mem.h>
#include <platform/Windows_1252.h>
#include <values/Object.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;

// The bytes of a file as 4-byte elements, each the Windows-1252 code point of its byte.
class BytesStripe final : public ::Object, public virtual Interfaces::Stripe {
public:
    explicit BytesStripe(std::vector<std::uint8_t> bytes) noexcept : _bytes(std::move(bytes)) {}

    // Interfaces::Stripe
    std::uint64_t elementSize() const noexcept override { return sizeof(std::uint32_t); }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept override
    {
        if (area.kind != BufferDesc::Plain) {
            Error::set(ErrInvalidArgument);
            return 0;
        }
        const std::uint64_t available = std::min(count, _bytes.size() - _position);
        auto* out = static_cast<unsigned char*>(area.pointer) + area.offset;
        for (std::uint64_t i = 0; i < available; ++i) {
            const std::uint32_t element = Windows_1252::toCodePoint(_bytes[_position++]);
            Mem::copy(&element, out + i * sizeof element, sizeof element);
        }
        if (available < count)
            Error::set(ErrOutOfRange);
        return available;
    }
    std::uint64_t write(BufferDesc&, std::uint64_t, std::uint32_t) noexcept override
    {
        Error::set(ErrNotSupported);
        return 0;
    }
    std::uint64_t size() const noexcept override { return _bytes.size(); }
    std::uint64_t seek(std::uint64_t position) noexcept override
    {
        return _position = std::min<std::uint64_t>(position, _bytes.size());
    }
    std::uint64_t tell() const noexcept override { return _position; }

private:
    const std::vector<std::uint8_t> _bytes;
    std::uint64_t _position = 0; // never after the end
};

} // namespace

int main(int argc, char** argv)
{
    std::ifstream file(argc > 1 ? argv[1] : "in.pdf", std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    const std::string read = text.str();
    std::vector<std::uint8_t> bytes(read.begin(), read.end());
    const auto document = Libraries::Files::PDF::Document::create(make<BytesStripe>(std::move(bytes)));
    if (!document)
        return std::printf("refused: 0x%X\n", Error::get()), 1;
    std::printf("%zu pages\n", document->getPages().size());
}
