#include <host/files/FileStructure.h>

#include <host/base/Characters.h>
#include <host/base/Lexer.h>
#include <platform/Limits.h>

#include <algorithm>
#include <limits>
#include <set>

namespace Host {

namespace {

constexpr std::string_view headerStart = "%PDF-";
constexpr std::string_view startKeyword = "startxref";
constexpr std::string_view tableKeyword = "xref";
constexpr std::string_view trailerKeyword = "trailer";
constexpr std::string_view objectStreamKey = "/ObjStm";
constexpr std::uint64_t furthestHeader = 1024; // bytes
constexpr std::uint64_t longestEnd = 2048;     // where the keyword before the last offset is looked for
constexpr std::uint64_t blockSize = 65536;     // in which texts are looked for
constexpr std::uint64_t longestDictionary = 1 << 20;
constexpr std::uint64_t longestSubsectionHeader = 64;
constexpr std::uint64_t rowLength = 20;

// What a trailer says of other tables.
struct Links {
    std::optional<std::uint64_t> previous;
    std::optional<std::uint64_t> hybrid; // the stream beside a table
    bool isEncrypted = false;
    bool isTableStream = false;
    // Of a table stream.
    std::uint64_t size = 0;                // what its Size says
    std::optional<std::uint64_t> indexed; // the rows that its Index counts
    bool hasCostlyFilters = false;

    std::uint64_t rows() const noexcept { return indexed.value_or(size); }
};

constexpr std::uint64_t usualRow = 4096; // no row of a table is longer, in bytes

constexpr std::uint64_t tooMany = std::numeric_limits<std::uint64_t>::max();

// Every second number of an array, added up; too many where it is anything else.
std::uint64_t sumOfCounts(Lexer array) noexcept
{
    std::uint64_t sum = 0;
    array.token(); // "["
    for (Lexer end = array; end.token() != "]"; end = array) {
        const auto first = array.number<std::uint64_t>();
        const auto count = array.number<std::uint64_t>();
        if (!first || !count || *count > tooMany - sum)
            return tooMany;
        sum += *count;
    }
    return sum;
}

// Whether a value, which the text is, has more than one name, as an array of filters.
bool hasSeveralNames(std::string_view value) noexcept
{
    Lexer lexer(value);
    std::size_t names = 0;
    while (!lexer.isAtEnd())
        names += lexer.token().starts_with('/') ? 1 : 0;
    return names > 1;
}

// Whether a number in the parameters of filters is too large for a row of a table.
bool hasLongRows(std::string_view parameters) noexcept
{
    Lexer lexer(parameters);
    while (!lexer.isAtEnd()) {
        Lexer number = lexer;
        const std::string_view word = lexer.token();
        const bool isNumber = !word.empty() && (word[0] == '+' || (word[0] >= '0' && word[0] <= '9'));
        if (isNumber && number.number<std::uint64_t>().value_or(usualRow + 1) > usualRow)
            return true;
    }
    return false;
}

bool isOneOf(std::string_view written, std::initializer_list<const char*> names) noexcept
{
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return isSameName(written, name); });
}

Links linksOf(std::string_view dictionary)
{
    Links links;
    Lexer lexer(dictionary);
    lexer.token(); // "<<"
    while (!lexer.isAtEnd()) {
        const std::string_view key = lexer.token();
        if (!key.starts_with('/')) {
            links.hasCostlyFilters = links.hasCostlyFilters || key != ">>"; // nobody knows what follows
            break;
        }
        const std::string_view name = key.substr(1);
        Lexer value = lexer;
        lexer.skipValue();
        const std::string_view text = dictionary.substr(value.place(), lexer.place() - value.place());
        if (Lexer reference = value; reference.reference()) {
            lexer = reference;
            // What the table needs can't be in what it leads to.
            links.hasCostlyFilters = links.hasCostlyFilters || isOneOf(name, {"Size", "Index", "Filter", "DecodeParms"});
        }
        if (isSameName(name, "Prev"))
            links.previous = value.number<std::uint64_t>();
        else if (isSameName(name, "XRefStm"))
            links.hybrid = value.number<std::uint64_t>();
        else if (isSameName(name, "Encrypt"))
            links.isEncrypted = value.token() != "null";
        else if (isSameName(name, "Type"))
            links.isTableStream = value.token() == "/XRef";
        else if (isSameName(name, "Size"))
            links.size = value.number<std::uint64_t>().value_or(tooMany);
        else if (isSameName(name, "Index"))
            links.indexed = sumOfCounts(value);
        else if (isSameName(name, "Filter"))
            links.hasCostlyFilters = links.hasCostlyFilters || hasSeveralNames(text);
        else if (isSameName(name, "DecodeParms"))
            links.hasCostlyFilters = links.hasCostlyFilters || hasLongRows(text);
    }
    return links;
}

// The search through one file.
class StructureSearch {
public:
    explicit StructureSearch(FileStripe& file) noexcept : _file(file) {}

    FileStructure run(StructureParts parts) noexcept
    {
        _start = findHeader();
        _found.isHeaderInside = _start != 0;
        std::set<std::uint64_t> visited;
        for (std::optional<std::uint64_t> offset = findStart(); offset && visited.insert(*offset).second;)
            offset = isReadTooOften() ? std::nullopt : readSection(*offset, visited.size() == 1);
        if (_found.tableStreams > 0 && parts == StructureParts::All)
            _found.hasObjectStreams = find(objectStreamKey, 0).has_value();
        return _found;
    }

private:
    bool isReadTooOften() const noexcept { return Limits::isReadTooOften(_bytesRead, _file.size()); }

    // Up to so many bytes at the place; fewer at the end, and where they can't be read.
    std::string read(std::uint64_t position, std::uint64_t length) noexcept
    {
        std::string text;
        while (text.size() < length && position < _file.size()) {
            const ByteRun run = _file.bytesAround(position);
            const std::uint64_t inRun = position - run.start;
            if (!run.bytes || inRun >= run.length)
                break;
            const std::uint64_t count = std::min(length - text.size(), run.length - inRun);
            text.append(reinterpret_cast<const char*>(run.bytes) + inRun, count);
            position += count;
        }
        _bytesRead += text.size();
        return text;
    }

    // Where the text is, from the position on.
    std::optional<std::uint64_t> find(std::string_view wanted, std::uint64_t position) noexcept
    {
        for (; position < _file.size(); position += blockSize) {
            const std::size_t place = read(position, blockSize + wanted.size()).find(wanted);
            if (place != std::string::npos)
                return position + place;
        }
        return std::nullopt;
    }

    // Where the first header with a version is; 0 when there is none.
    std::uint64_t findHeader() noexcept
    {
        const std::string head = read(0, furthestHeader + headerStart.size() + 1);
        std::size_t place = head.find(headerStart);
        const auto hasVersion = [&](std::size_t start) { return head[start] >= '0' && head[start] <= '9'; };
        while (place != head.npos && !hasVersion(place + headerStart.size()))
            place = head.find(headerStart, place + 1);
        return place == head.npos ? 0 : place;
    }

    // The offset at the end of the file.
    std::optional<std::uint64_t> findStart() noexcept
    {
        const std::uint64_t length = std::min(longestEnd, _file.size());
        const std::string end = read(_file.size() - length, length);
        const std::size_t place = end.rfind(startKeyword);
        if (place == end.npos)
            return std::nullopt;
        return Lexer(std::string_view(end).substr(place + startKeyword.size())).number<std::uint64_t>();
    }

    // A table with its trailer, or a stream. Where the one before it is.
    std::optional<std::uint64_t> readSection(std::uint64_t offset, bool isNewest) noexcept
    {
        const std::uint64_t place = _start + offset;
        const std::string head = read(place, blockSize);
        Lexer lexer(head);
        if (lexer.token() == tableKeyword)
            return readTable(place + lexer.place(), isNewest);
        const Links links = linksOf(dictionaryOf(head));
        if (!links.isTableStream)
            return std::nullopt;
        ++_found.tableStreams;
        _found.isEncrypted = _found.isEncrypted || links.isEncrypted;
        countStream(links);
        return links.previous;
    }

    void countStream(const Links& stream) noexcept
    {
        const std::uint64_t rows = stream.rows();
        _found.streamedRows += std::min(rows, tooMany - _found.streamedRows);
        _found.hasCostlyFilters = _found.hasCostlyFilters || stream.hasCostlyFilters;
    }

    // The dictionary of the object that the text begins with.
    static std::string_view dictionaryOf(std::string_view object) noexcept
    {
        Lexer lexer(object);
        for (int i = 0; i < 3; ++i) // id, generation, "obj"
            lexer.token();
        return object.substr(lexer.place());
    }

    // Starts after the keyword.
    std::optional<std::uint64_t> readTable(std::uint64_t place, bool isNewest) noexcept
    {
        const Trailer trailer = findTrailer(place);
        if (!trailer.place)
            return std::nullopt;
        ++_found.tables;
        const std::string text = read(*trailer.place, longestDictionary);
        const std::size_t dictionary = std::min(text.find("<<"), text.size());
        if (isNewest) {
            _found.isTrailerOnOneLine = text.find_first_not_of("\r\n") != dictionary;
            _found.hasSubsections = trailer.subsections > 1;
        }
        const Links links = linksOf(std::string_view(text).substr(dictionary));
        if (links.hybrid) {
            ++_found.tableStreams;
            countStream(linksOf(dictionaryOf(read(_start + *links.hybrid, blockSize))));
        }
        _found.isEncrypted = _found.isEncrypted || links.isEncrypted;
        return links.previous;
    }

    // Where a table ends: after the keyword of its trailer, if there is one.
    struct Trailer {
        std::optional<std::uint64_t> place;
        std::size_t subsections;
    };

    Trailer findTrailer(std::uint64_t place) noexcept
    {
        std::size_t subsections = 0;
        for (std::uint64_t position = place; position < _file.size() && !isReadTooOften(); ++subsections) {
            const std::string head = read(position, longestSubsectionHeader);
            Lexer lexer(head);
            if (Lexer keyword = lexer; keyword.token() == trailerKeyword)
                return {position + keyword.place(), subsections};
            const auto first = lexer.number<std::uint64_t>();
            const auto count = lexer.number<std::uint64_t>();
            if (!first || !count || *count > _file.size() / rowLength)
                break;
            lexer.skipBlanks();
            position += lexer.place() + *count * rowLength;
        }
        return searchTrailer(place);
    }

    // The same of a table whose rows have another length.
    Trailer searchTrailer(std::uint64_t place) noexcept
    {
        const std::optional<std::uint64_t> trailer = find(trailerKeyword, place);
        if (!trailer)
            return {std::nullopt, 0};
        const std::string text = read(place, *trailer - place);
        Lexer lexer(text);
        lexer.token();
        const std::uint64_t count = lexer.number<std::uint64_t>().value_or(0);
        for (std::uint64_t pieces = 0; pieces / 3 < count && !lexer.isAtEnd(); ++pieces)
            lexer.token();
        lexer.skipBlanks();
        return {*trailer + trailerKeyword.size(), lexer.isAtEnd() ? std::size_t(1) : std::size_t(2)};
    }

    FileStripe& _file;
    std::uint64_t _start = 0; // of the file in what it is in: offsets count from the header
    std::uint64_t _bytesRead = 0;
    FileStructure _found;
};

} // namespace

bool FileStructure::isPlain() const noexcept
{
    return tables == 1 && tableStreams == 0 && !isEncrypted && !hasSubsections && !isTrailerOnOneLine
        && !isHeaderInside;
}

FileStructure findStructure(FileStripe& file, StructureParts parts) noexcept
{
    return StructureSearch(file).run(parts);
}

std::string structureWords(const FileStructure& structure) noexcept
{
    const std::pair<bool, const char*> all[] = {
        {structure.tableStreams > 0, "cross-reference streams"},
        {structure.hasObjectStreams, "object streams"},
        {structure.isEncrypted, "encrypted"},
        {structure.tables > 1, "several tables"},
        {structure.hasSubsections, "a table of several subsections"},
        {structure.isTrailerOnOneLine, "trailer and its dictionary on one line"},
        {structure.isHeaderInside, "something before the header"},
    };
    std::string words;
    for (const auto& [isThere, word] : all)
        if (isThere)
            words += (words.empty() ? "" : ", ") + std::string(word);
    return words;
}

} // namespace Host
