#include <host/losses/TableChain.h>

#include <host/base/Limits.h>

#include <set>

namespace Host {

TableChain::TableChain(SourceText& text) noexcept : _text(text)
{
    std::set<std::uint64_t> visited;
    std::optional<std::uint64_t> offset = findStart();
    _isWhole = offset.has_value();
    for (bool isNewest = true; offset && visited.insert(*offset).second; isNewest = false) {
        FormatValue trailer = readTable(*offset, isNewest);
        const FormatValue* previous = trailer.find("Prev");
        _isWhole = _isWhole && trailer.kind == FormatValue::Kind::Dictionary && !trailer.find("XRefStm");
        const bool goesOn = previous && previous->isCount() && !Limits::isReadTooOften(_text.bytesRead(), _text.size());
        _isWhole = _isWhole && goesOn == (previous != nullptr);
        offset = goesOn ? std::optional(previous->count()) : std::nullopt;
        if (isNewest)
            _trailer = std::move(trailer);
    }
}

// The number after the last "startxref".
std::optional<std::uint64_t> TableChain::findStart() noexcept
{
    constexpr std::string_view keyword = "startxref";
    const std::uint64_t size = _text.size();
    // Any number of line endings may follow.
    for (std::uint64_t length = 64;; length *= 2) {
        const std::uint64_t start = size - std::min(length, size);
        _text.moveTo(start);
        _text.at(size - 1);
        const std::size_t place = _text.slice(start, size, size).rfind(keyword);
        std::uint64_t offset = 0;
        if (place != std::string::npos) {
            FormatReader reader(_text, start + place + keyword.size());
            return reader.readCount(offset) ? std::optional(offset) : std::nullopt;
        }
        if (start == 0)
            return {};
    }
}

// Gives the trailer after the table; `Nothing` when the table or the trailer is unusable.
FormatValue TableChain::readTable(std::uint64_t offset, bool isNewest) noexcept
{
    _text.moveTo(offset);
    FormatReader reader(_text, offset);
    if (!reader.skipKeyword("xref"))
        return {};
    Place place = isNewest ? Place::FirstSubsection : Place::EarlierTable;
    std::uint64_t first = 0;
    for (bool isFirst = isNewest; reader.readCount(first); isFirst = false) {
        std::uint64_t count = 0;
        if (!reader.readCount(count))
            return {};
        if (isFirst)
            _first = static_cast<std::uint32_t>(first);
        for (std::uint64_t i = 0; i < count; ++i)
            if (!readRow(reader, static_cast<std::uint32_t>(first + i), place))
                return {};
        place = isNewest ? Place::FurtherSubsection : Place::EarlierTable;
    }
    if (!reader.skipKeyword("trailer"))
        return {};
    reader.skipSpace();
    if (isNewest)
        _comments = reader.takeComments();
    return reader.readValue();
}

bool TableChain::readRow(FormatReader& reader, std::uint32_t id, Place place) noexcept
{
    Row row{0, 0, place, false};
    char letter = 0;
    if (!reader.readCount(row.offset) || !reader.readCount(row.generation) || !reader.readLetter(letter)
        || (letter != 'n' && letter != 'f'))
        return false;
    row.inUse = letter == 'n';
    _rows.emplace(id, row); // a newer one stays
    return true;
}

} // namespace Host
