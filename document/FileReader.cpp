#include <document/FileReader.h>

#include <document/FileEnd.h>
#include <document/Report.h>
#include <document/Version.h>
#include <platform/StrConv.h>
#include <platform/StringUtil.h>
#include <values/DictionaryObj.h>

#include <algorithm>
#include <cstring>

namespace Libraries::Files::PDF {

namespace {

// The next line; null when there is none, or none can be had.
Ref<::String> readLine(ElementReader& elements)
{
    std::u32string line;
    return elements.readLine(line) ? ::String::create(line) : nullptr;
}

// The file, as the search for its end wants it.
struct EndSource {
    ElementReader& elements;

    bool at(std::uint64_t position, std::uint32_t& c) { return elements.seek(position) && elements.next(c); }
    bool hasKeywordEndingAt(std::uint64_t last, const char* keyword)
    {
        std::uint32_t text[16];
        const std::size_t length = std::strlen(keyword);
        return last + 1 >= length && elements.seek(last + 1 - length) && elements.read(text, length)
            && std::equal(text, text + length, keyword);
    }
};

// The position after the keyword, 0 when it is not there. The walk passes over the trailer dictionary by
// counting its brackets, and then over line ends. Deliberate: pairs of brackets overlap, so a dictionary
// that ends in ">>>>" is never passed.
std::uint64_t findTrailer(EndSource& source, std::uint64_t after)
{
    if (after < std::strlen(Syntax::trailerKeyword))
        return 0;
    std::uint64_t position = after;
    std::uint32_t c = 0;
    std::uint32_t previous = 0;
    bool isEndSeen = false;
    for (std::int64_t depth = 0; position > 0;) {
        if (c == '>' && previous == '>') {
            isEndSeen = true;
            ++depth;
        } else if (c == '<' && previous == '<') {
            --depth;
        }
        previous = c;
        if (!source.at(--position, c))
            return 0;
        if (isEndSeen && depth == 0 && !Syntax::isLineEnd(c))
            break;
    }
    return source.hasKeywordEndingAt(position, Syntax::trailerKeyword) ? position + 1 : 0;
}

} // namespace

bool FileReader::read(FileContent& content) noexcept
{
    std::uint64_t tableOffset = 0;
    if (!readHeader(content) || !readTrailer(content, tableOffset))
        return false;
    if (!readTable(tableOffset, content.firstObjectId))
        return refuse(ErrBadXref);
    return readObjects(content);
}

// Deliberately without a search: a file with anything before its header is refused.
bool FileReader::readHeader(FileContent& content) noexcept
{
    const Ref<::String> line = readLine(_elements);
    if (!line || line->isEmpty())
        return refuse(ErrNoHeaderLine);
    const std::size_t start = std::strlen(Syntax::headerStart);
    if (!line->substring(0, start)->equals(Syntax::headerStart))
        return refuse(ErrBadHeader);
    const std::size_t point = line->find('.', start);
    if (point == line->length())
        return refuse(ErrBadHeader);
    content.version = versionFromStrings(line->substring(start, point - start), line->substring(point + 1));
    if (content.version == 0)
        return refuse(ErrBadHeader);
    return _elements.seek(line->length()) ? readLineEnding(content) : refuse(ErrBadLineEnding);
}

// Starts after the header line, ends after its ending.
bool FileReader::readLineEnding(FileContent& content) noexcept
{
    std::uint32_t c = 0;
    if (!_elements.next(c))
        return refuse(ErrBadLineEnding);
    if (!Syntax::isLineEnd(c))
        return report.fail(ErrBadLineEnding, "Unexpected line ending character: ", c);
    content.lineEnding = ::String::create(c);
    if (c == Syntax::lineFeed)
        return true;
    if (!_elements.next(c))
        return refuse(ErrBadLineEnding);
    if (c == Syntax::lineFeed) {
        content.lineEnding = content.lineEnding->append(c);
        return true;
    }
    return _elements.seek(_elements.tell() - 1) || refuse(ErrBadLineEnding);
}

bool FileReader::readTrailer(FileContent& content, std::uint64_t& tableOffset) noexcept
{
    EndSource source{_elements};
    const std::uint64_t endMarker = FileEnd::findEndMarker(source, _elements.size());
    if (endMarker == 0)
        return refuse(ErrNoEofMarker);
    const std::uint64_t afterStartXref = FileEnd::findStartXref(source, endMarker);
    if (afterStartXref == 0)
        return refuse(ErrNoStartXref);
    _afterTrailer = findTrailer(source, afterStartXref);
    if (_afterTrailer == 0)
        return refuse(ErrNoTrailerKeyword);
    if (!_elements.seek(afterStartXref))
        return refuse(ErrBadTrailer);
    const Ref<::String> rest = StringUtil::trim(readLine(_elements));
    if (!rest || !rest->isEmpty())
        return refuse(ErrBadTrailer);
    unsigned long long offset = 0;
    if (!StrConv::num(StringUtil::trim(readLine(_elements)), &offset, nullptr))
        return refuse(ErrBadTrailer);
    tableOffset = offset;
    if (!_elements.seek(_afterTrailer))
        return refuse(ErrBadTrailer);
    content.trailer = _parser.readDictionary();
    return content.trailer || refuse(ErrBadTrailer);
}

// Deliberately one subsection: objects of a second one don't exist. What follows the rows isn't looked at.
bool FileReader::readTable(std::uint64_t offset, std::uint32_t& firstObjectId) noexcept
{
    if (!_elements.seek(offset))
        return false;
    const Ref<::String> keyword = StringUtil::trim(readLine(_elements));
    if (!keyword || !keyword->equals(Syntax::xrefKeyword))
        return false;
    const Ref<TVector<Ref<::String>>> header = StringUtil::split(readLine(_elements), ' ', 0);
    unsigned long long count = 0;
    if (!header || header->size() != 2 || !StrConv::num(header->get(0), &firstObjectId, nullptr)
        || !StrConv::num(header->get(1), &count, nullptr))
        return false;
    std::u32string line;
    for (unsigned long long i = 0; i < count; ++i)
        if (!_elements.readLine(line) || !readRow(line))
            return report.line("XRef entry ", i, " is invalid: ", ::String::create(line));
    noteAfterTable();
    return true;
}

void FileReader::noteAfterTable() noexcept
{
    if (!_parser.ahead().isPossible())
        return;
    const std::uint64_t end = _elements.tell();
    const bool isTrailer = _parser.ahead().pass(Syntax::trailerKeyword);
    if (!isTrailer || _elements.tell() != _afterTrailer)
        _parser.note(isTrailer ? ReadingNote::OtherTrailer : ReadingNote::Subsection, end);
}

bool FileReader::readRow(std::u32string_view line) noexcept
{
    std::u32string_view pieces[3];
    unsigned long long offset = 0;
    unsigned generation = 0;
    if (StringUtil::split(line, U' ', pieces) != std::size(pieces) || !StrConv::num(pieces[0], &offset)
        || !StrConv::num(pieces[1], &generation))
        return false;
    const bool inUse = pieces[2] == U"n";
    // Deliberate: 65536 passes, and is kept as 0.
    if (generation > Syntax::maxGeneration + 1 || (!inUse && pieces[2] != U"f"))
        return false;
    _rows.push_back({offset, static_cast<std::uint16_t>(generation), inUse});
    return true;
}

bool FileReader::readObjects(FileContent& content) noexcept
{
    std::uint32_t id = content.firstObjectId;
    for (const Row& row : _rows) {
        if (!row.inUse) {
            if (row.generation != FreeRow::usualGeneration(id))
                content.freeRows.push_back({id, row.generation});
            ++id;
            continue;
        }
        if (row.offset == 0)
            return report.fail(ErrBadXref, "In use object reference is at offset 0: ", id);
        Ref<Object> object = _parser.readObject(id, row.generation, row.offset);
        if (!object)
            return report.fail(ErrBadObject, "Failed to read object at ", row.offset);
        content.objects.push_back(std::move(object));
        ++id;
    }
    content.nextObjectId = id;
    content.opening = _parser.opening();
    content.notes = _parser.notes();
    content.unkeptNotes = _parser.takeUnkept();
    content.sources = _parser.takeSources();
    return true;
}

} // namespace Libraries::Files::PDF
