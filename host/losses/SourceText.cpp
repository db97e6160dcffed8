#include <host/losses/SourceText.h>

#include <host/base/Characters.h>
#include <platform/Limits.h>

#include <algorithm>

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
    _gaps.clear();
}

int SourceText::at(std::uint64_t position) noexcept
{
    if (position < _start)
        return end;
    while (position - _start >= _held.size() + skipped())
        if (!readOn())
            return end;
    const auto place = placeOf(position);
    return place ? static_cast<unsigned char>(_held[*place]) : ' ';
}

void SourceText::skip(std::uint64_t from, std::uint64_t to) noexcept
{
    const bool goesOn = !_gaps.empty() && from == _gaps.back().end;
    from += goesOn ? 0 : Limits::maxLossText;
    if (!_file || from < _start || from >= to || to - _start > _held.size() + skipped()
        || (!_gaps.empty() && from < _gaps.back().end))
        return;
    _held.erase(from - _start - skipped(), to - from);
    if (!goesOn)
        _gaps.push_back({from, from, skipped()});
    _gaps.back().total += to - _gaps.back().end;
    _gaps.back().end = to;
}

std::optional<std::uint64_t> SourceText::placeOf(std::uint64_t position) const noexcept
{
    if (_gaps.empty() || position < _gaps.front().begin)
        return position - _start;
    if (position >= _gaps.back().end)
        return position - _start - _gaps.back().total;
    const auto after = std::upper_bound(_gaps.begin(), _gaps.end(), position,
        [](std::uint64_t place, const Gap& gap) { return place < gap.begin; });
    const Gap& gap = *std::prev(after);
    return position < gap.end ? std::nullopt : std::optional(position - _start - gap.total);
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
    const auto place = begin < _start ? std::nullopt : placeOf(begin);
    if (!place || *place > _held.size() || limit < begin)
        return {};
    return _held.substr(*place, std::min<std::uint64_t>(limit - begin, maxLength));
}

bool SourceText::readOn() noexcept
{
    const std::uint64_t position = _start + _held.size() + skipped();
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
