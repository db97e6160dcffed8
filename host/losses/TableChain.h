#pragma once

#include <host/losses/FormatReader.h>

#include <map>
#include <optional>

namespace Host {

// The cross-reference tables of a file, as the format means them: all subsections of the newest one, and
// those that Prev leads to. Tables in streams are not read, and tables that lie inside each other only up to the
// limit of readings.
class TableChain {
public:
    enum class Place { FirstSubsection, FurtherSubsection, EarlierTable };
    struct Row {
        std::uint64_t offset;
        std::uint64_t generation;
        Place place;
        bool inUse;
    };

    explicit TableChain(SourceText& text) noexcept;

    // The newest row of each number.
    const std::map<std::uint32_t, Row>& rows() const noexcept { return _rows; }
    // The number that the first subsection begins with.
    std::uint32_t first() const noexcept { return _first; }
    // The trailer of the newest table; `Nothing` when none follows it.
    const FormatValue& trailer() const noexcept { return _trailer; }
    // Comments between the rows of the newest table and before its trailer.
    const std::vector<FormatReader::Range>& comments() const noexcept { return _comments; }
    // Whether all tables were read.
    bool isWhole() const noexcept { return _isWhole; }

private:
    std::optional<std::uint64_t> findStart() noexcept;
    FormatValue readTable(std::uint64_t offset, bool isNewest) noexcept;
    bool readRow(FormatReader& reader, std::uint32_t id, Place place) noexcept;

    SourceText& _text;
    std::map<std::uint32_t, Row> _rows;
    std::uint32_t _first = 0;
    FormatValue _trailer;
    std::vector<FormatReader::Range> _comments;
    bool _isWhole = true;
};

} // namespace Host
