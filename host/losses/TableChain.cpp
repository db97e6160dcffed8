#include <host/losses/TableChain.h>

#include <document/FileEnd.h>
#include <platform/Limits.h>

#include <algorithm>
#include <set>

namespace Host {

namespace {

// A text from its end backwards, as the search for the end of a file wants it.
class Tail {
public:
    explicit Tail(SourceText& text) : _text(text), _start(text.size()) {}

    bool at(std::uint64_t position, std::uint32_t& c)
    {
        holdFrom(position);
        const int byte = _text.at(position);
        c = static_cast<std::uint32_t>(byte);
        return byte != SourceText::end;
    }
    bool hasKeywordEndingAt(std::uint64_t last, std::string_view keyword)
    {
        if (last + 1 < keyword.size())
            return false;
        holdFrom(last + 1 - keyword.size());
        return _text.isAt(last + 1 - keyword.size(), keyword);
    }

private:
    void holdFrom(std::uint64_t position)
    {
        constexpr std::uint64_t step = 64;
        if (position >= _start)
            return;
        _start = position - std::min(position, step);
        _text.moveTo(_start);
    }

    SourceText& _text;
    std::uint64_t _start; // of what is held
};

} // namespace

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

// The number after "startxref".
std::optional<std::uint64_t> TableChain::findStart() noexcept
{
    namespace FileEnd = Libraries::Files::PDF::FileEnd;
    Tail tail(_text);
    const std::uint64_t endMarker = FileEnd::findEndMarker(tail, _text.size());
    const std::uint64_t place = endMarker == 0 ? 0 : FileEnd::findStartXref(tail, endMarker);
    if (place == 0)
        return {};
    std::uint64_t offset = 0;
    return FormatReader(_text, place).readCount(offset) ? std::optional(offset) : std::nullopt;
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
