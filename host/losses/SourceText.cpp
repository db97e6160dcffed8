#include <host/losses/SourceText.h>

#include <host/base/Characters.h>

namespace Host {

namespace {

// What is read at first; then as much again as is held. Most objects are short.
constexpr std::size_t firstRead = 128;
constexpr std::size_t maxRead = 65536;

} // namespace

void SourceText::moveTo(std::uint64_t position) noexcept
{
    _start = position;
    _held.clear();
}

int SourceText::at(std::uint64_t position) noexcept
{
    if (position < _start)
        return end;
    while (position - _start >= _held.size())
        if (!readOn())
            return end;
    return static_cast<unsigned char>(_held[position - _start]);
}

bool SourceText::isAt(std::uint64_t position, std::string_view text) noexcept
{
    for (std::size_t i = 0; i < text.size(); ++i)
        if (at(position + i) != static_cast<unsigned char>(text[i]))
            return false;
    return true;
}

std::string SourceText::slice(std::uint64_t begin, std::uint64_t limit, std::size_t maxLength) const noexcept
{
    if (begin < _start || begin - _start > _held.size() || limit < begin)
        return {};
    return _held.substr(begin - _start, std::min<std::uint64_t>(limit - begin, maxLength));
}

bool SourceText::readOn() noexcept
{
    const std::uint64_t position = _start + _held.size();
    if (!_file || position >= _file->size() || _file->seek(position) != position)
        return false;
    const std::size_t wanted = std::clamp(_held.size(), firstRead, maxRead);
    _block.resize(std::min<std::uint64_t>(wanted, _file->size() - position));
    BufferDesc area = BufferDesc::plain(_block.data());
    _block.resize(_file->read(area, _block.size(), waitForever));
    _bytesRead += _block.size();
    for (const std::uint32_t element : _block)
        _held += static_cast<char>(byteOfElement(element));
    return !_block.empty();
}

} // namespace Host
