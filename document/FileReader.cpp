#include <document/DocumentObj.h>

#include <document/Keys.h>
#include <document/Report.h>
#include <document/Syntax.h>
#include <document/Version.h>
#include <platform/StrConv.h>
#include <platform/StringUtil.h>
#include <values/DictionaryObj.h>

#include <algorithm>
#include <cstring>

// Opening a file: the header line, then from the end of the file backwards to the trailer, then the
// cross-reference table, then every object that it calls in use. The first failure ends the opening.

namespace Libraries::Files::PDF {

namespace {

// The next line; null when there is none, or none can be had.
Ref<::String> readLine(ElementReader& elements)
{
    std::u32string line;
    return elements.readLine(line) ? ::String::create(line) : nullptr;
}

// Whether the last character of the keyword stands at `last`, and the others before it.
bool hasKeywordEndingAt(ElementReader& elements, std::uint64_t last, const char* keyword)
{
    std::uint32_t text[16];
    const std::size_t length = std::strlen(keyword);
    return last + 1 >= length && elements.seek(last + 1 - length) && elements.read(text, length)
        && std::equal(text, text + length, keyword);
}

// The place of the end marker, 0 when it is not there. Only line ends may follow it.
std::uint64_t findEof(ElementReader& elements)
{
    std::uint64_t position = elements.size();
    const std::size_t length = std::strlen(Syntax::endMarker);
    if (position < length)
        return 0;
    std::uint32_t c = Syntax::lineFeed;
    while (position > 0 && Syntax::isLineEnd(c))
        if (!elements.seek(--position) || !elements.next(c))
            return 0;
    return hasKeywordEndingAt(elements, position, Syntax::endMarker) ? position + 1 - length : 0;
}

// The place behind the keyword, 0 when it is not there. Between it and the end marker stand line ends
// and digits, and nothing else.
std::uint64_t findStartXref(ElementReader& elements, std::uint64_t eof)
{
    if (eof < std::strlen(Syntax::startXrefKeyword))
        return 0;
    std::uint64_t position = eof;
    std::uint32_t c = Syntax::lineFeed;
    while (position > 0 && (Syntax::isLineEnd(c) || (c >= '0' && c <= '9')))
        if (!elements.seek(--position) || !elements.next(c))
            return 0;
    return hasKeywordEndingAt(elements, position, Syntax::startXrefKeyword) ? position + 1 : 0;
}

// The place behind the keyword, 0 when it is not there. The walk passes over the trailer dictionary by
// counting its brackets, and then over line ends. Deliberate: pairs of brackets overlap, so a dictionary
// that ends in ">>>>" is never passed.
std::uint64_t findTrailer(ElementReader& elements, std::uint64_t after)
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
        if (!elements.seek(--position) || !elements.next(c))
            return 0;
        if (isEndSeen && depth == 0 && !Syntax::isLineEnd(c))
            break;
    }
    return hasKeywordEndingAt(elements, position, Syntax::trailerKeyword) ? position + 1 : 0;
}

} // namespace

bool DocumentObj::load() noexcept
{
    ElementReader elements(*_stripe);
    ValueParser parser(elements);
    if (!readHeader(elements) || !readTrailer(elements, parser))
        return false;
    if (!readXref(elements))
        return refuse(ErrBadXref);
    return readObjects(parser);
}

// Deliberately without a search: a file with anything before its header is refused.
bool DocumentObj::readHeader(ElementReader& elements) noexcept
{
    const Ref<::String> line = readLine(elements);
    if (!line || line->isEmpty())
        return refuse(ErrNoHeaderLine);
    const std::size_t start = std::strlen(Syntax::headerStart);
    if (!line->substring(0, start)->equals(Syntax::headerStart))
        return refuse(ErrBadHeader);
    const std::size_t point = line->find('.', start);
    if (point == line->length())
        return refuse(ErrBadHeader);
    _version = versionFromStrings(line->substring(start, point - start), line->substring(point + 1));
    if (_version == 0)
        return refuse(ErrBadHeader);
    return elements.seek(line->length()) ? detectLineEnding(elements) : refuse(ErrBadLineEnding);
}

// Starts behind the header line, ends behind its ending.
bool DocumentObj::detectLineEnding(ElementReader& elements) noexcept
{
    std::uint32_t c = 0;
    if (!elements.next(c))
        return refuse(ErrBadLineEnding);
    if (!Syntax::isLineEnd(c))
        return report.fail(ErrBadLineEnding, "Unexpected line ending character: ", c);
    _lineEnding = ::String::create(c);
    if (c == Syntax::lineFeed)
        return true;
    if (!elements.next(c))
        return refuse(ErrBadLineEnding);
    if (c == Syntax::lineFeed) {
        _lineEnding = _lineEnding->append(c);
        return true;
    }
    return elements.seek(elements.tell() - 1) || refuse(ErrBadLineEnding);
}

bool DocumentObj::readTrailer(ElementReader& elements, ValueParser& parser) noexcept
{
    _eofOffset = findEof(elements);
    if (_eofOffset == 0)
        return refuse(ErrNoEofMarker);
    const std::uint64_t behindStartXref = findStartXref(elements, _eofOffset);
    if (behindStartXref == 0)
        return refuse(ErrNoStartXref);
    const std::uint64_t behindTrailer = findTrailer(elements, behindStartXref);
    if (behindTrailer == 0)
        return refuse(ErrNoTrailerKeyword);
    if (!elements.seek(behindStartXref))
        return refuse(ErrBadTrailer);
    const Ref<::String> rest = StringUtil::trim(readLine(elements));
    if (!rest || !rest->isEmpty())
        return refuse(ErrBadTrailer);
    unsigned long long startXref = 0;
    if (!StrConv::num(StringUtil::trim(readLine(elements)), &startXref, nullptr))
        return refuse(ErrBadTrailer);
    _startXref = startXref;
    if (!elements.seek(behindTrailer))
        return refuse(ErrBadTrailer);
    _trailer = parser.readDictionary();
    return _trailer || refuse(ErrBadTrailer);
}

// Deliberately one subsection: objects of a second one don't exist. What follows the lines isn't looked at.
bool DocumentObj::readXref(ElementReader& elements) noexcept
{
    if (!elements.seek(_startXref))
        return false;
    const Ref<::String> keyword = StringUtil::trim(readLine(elements));
    if (!keyword || !keyword->equals(Syntax::xrefKeyword))
        return false;
    const Ref<TVector<Ref<::String>>> header = StringUtil::split(readLine(elements), ' ', 0);
    unsigned long long count = 0;
    if (!header || header->size() != 2 || !StrConv::num(header->get(0), &_firstObjectId, nullptr)
        || !StrConv::num(header->get(1), &count, nullptr))
        return false;
    std::u32string line;
    for (unsigned long long i = 0; i < count; ++i)
        if (!elements.readLine(line) || !readXrefEntry(line))
            return report.line("XRef entry ", i, " is invalid: ", ::String::create(line));
    return true;
}

bool DocumentObj::readXrefEntry(std::u32string_view line) noexcept
{
    std::u32string_view pieces[3];
    unsigned long long offset = 0;
    unsigned generation = 0;
    if (StringUtil::split(line, U' ', pieces) != std::size(pieces) || !StrConv::num(pieces[0], &offset)
        || !StrConv::num(pieces[1], &generation))
        return false;
    const bool inUse = pieces[2] == U"n";
    // Deliberate: 65536 passes, and is kept as 0.
    if (generation > Syntax::highestGeneration + 1 || (!inUse && pieces[2] != U"f"))
        return false;
    _xref.push_back({offset, static_cast<std::uint16_t>(generation), inUse});
    return true;
}

bool DocumentObj::readObjects(ValueParser& parser) noexcept
{
    std::uint32_t id = _firstObjectId;
    for (const XrefEntry& entry : _xref) {
        if (entry.inUse && entry.offset == 0)
            return report.fail(ErrBadXref, "In use object reference is at offset 0: ", id);
        if (entry.inUse) {
            Ref<PDF::Object> object = parser.readObject(id, entry.generation, entry.offset);
            if (!object)
                return report.fail(ErrBadObject, "Failed to read object at ", entry.offset);
            _objects.push_back(std::move(object));
        }
        ++id;
    }
    _nextObjectId = id;
    return true;
}

} // namespace Libraries::Files::PDF
