#include <host/Characters.h>

#include <platform/Windows_1252.h>

#include <algorithm>
#include <vector>

namespace Host {

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;

std::array<std::uint32_t, 256> makeElements()
{
    const Windows_1252 encoding(true);
    std::array<std::uint32_t, 256> elements;
    for (std::size_t byte = 0; byte < elements.size(); ++byte)
        elements[byte] = encoding.codePoint(static_cast<std::uint8_t>(byte));
    return elements;
}

// By element, up to the highest that has a byte.
std::vector<std::int16_t> makeBytes()
{
    std::vector<std::int16_t> bytes(*std::max_element(elementOfByte.begin(), elementOfByte.end()) + 1, -1);
    for (std::size_t byte = 0; byte < elementOfByte.size(); ++byte)
        bytes[elementOfByte[byte]] = static_cast<std::int16_t>(byte);
    return bytes;
}

} // namespace

const std::array<std::uint32_t, 256> elementOfByte = makeElements();

int byteOfElement(std::uint32_t element) noexcept
{
    static const std::vector<std::int16_t> bytes = makeBytes();
    return element < bytes.size() ? bytes[element] : -1;
}

} // namespace Host
