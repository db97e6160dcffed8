#pragma once

#include <cstdint>
#include <string_view>

namespace Host {

// Numbers in the bytes of a font program, the highest byte first. Offsets may be any: past the end every number is 0
// and every part is empty.
class BinaryView {
public:
    BinaryView() noexcept = default;
    explicit BinaryView(std::string_view bytes) noexcept : _bytes(bytes) {}

    std::size_t size() const noexcept { return _bytes.size(); }
    std::string_view bytes() const noexcept { return _bytes; }
    // Of up to 4 bytes.
    std::uint32_t number(std::size_t offset, std::size_t byteCount) const noexcept
    {
        std::uint32_t number = 0;
        if (offset <= size() && byteCount <= size() - offset)
            for (std::size_t i = 0; i < byteCount; ++i)
                number = number << 8 | static_cast<unsigned char>(_bytes[offset + i]);
        return number;
    }
    std::uint32_t byte(std::size_t offset) const noexcept { return number(offset, 1); }
    std::uint32_t word(std::size_t offset) const noexcept { return number(offset, 2); }
    std::uint32_t doubleWord(std::size_t offset) const noexcept { return number(offset, 4); }
    // Up to so many bytes.
    BinaryView part(std::size_t offset, std::size_t byteCount = std::string_view::npos) const noexcept
    {
        return offset <= size() ? BinaryView(_bytes.substr(offset, byteCount)) : BinaryView();
    }

private:
    std::string_view _bytes;
};

} // namespace Host
