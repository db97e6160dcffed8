#include <document/DocumentObj.h>

#include <document/Keys.h>
#include <document/Report.h>
#include <document/Syntax.h>
#include <document/ValueWriter.h>
#include <document/Version.h>
#include <values/Dictionary.h>
#include <values/NumberObj.h>

#include <algorithm>

// The written file, in its order: header, objects, cross-reference table, trailer. Every line ends as the
// lines of the file did that was read.

namespace Libraries::Files::PDF {

namespace {

constexpr std::size_t longestLineEnding = 2;

// Writes, and counts what went out.
bool writeElements(Interfaces::Stream& out, void* elements, std::uint64_t count, std::uint64_t& offset)
{
    BufferDesc area = BufferDesc::plain(elements);
    if (out.write(area, count, waitForever) != count)
        return false;
    offset += count;
    return true;
}

// A line that is one keyword.
MemOutStrm keywordLine(const char* keyword)
{
    MemOutStrm line;
    line.append(keyword);
    return line;
}

// A row of the table without its line ending. Each row has 20 characters, those of the ending included.
void makeRow(MemOutStrm& row, std::uint64_t offset, std::uint32_t generation, char kind, bool isPadded)
{
    row.clear();
    row.appendNumber(offset, Syntax::offsetDigits);
    row.append(' ');
    row.appendNumber(generation, Syntax::generationDigits);
    row.append(' ');
    row.append(kind);
    if (isPadded)
        row.append(' ');
}

} // namespace

Ref<TConstArray<std::uint32_t>> DocumentObj::valueToBuffer(const Ref<Value>& value) noexcept
{
    MemOutStrm text;
    if (!ValueWriter(*this, *_lineEnding, text).writeValue(value))
        return nullptr;
    return TConstArray<std::uint32_t>::create(text.data(), text.size());
}

bool DocumentObj::write(Ref<Interfaces::Stream> out) noexcept
{
    if (!out)
        return refuse(ErrNullArgument);
    if (out->elementSize() != sizeof(std::uint32_t))
        return refuse(ErrInvalidArgument);
    std::uint64_t offset = 0;
    if (!writeVersion(*out, offset))
        return report.fail(ErrWriteVersion, "Failed to write PDF version");
    std::vector<Ref<PDF::Object>> objects = _objects;
    std::sort(objects.begin(), objects.end(),
        [](const Ref<PDF::Object>& a, const Ref<PDF::Object>& b) { return a->id() < b->id(); });
    std::vector<WrittenObject> written;
    written.reserve(objects.size());
    for (const Ref<PDF::Object>& object : objects) {
        const std::uint64_t start = offset;
        if (!writeObject(*out, *object, offset))
            return report.fail(ErrWriteObject, "Failed to write object ", object->asText());
        written.push_back({start, object->generation()});
    }
    if (!writeTrailer(*out, written, offset))
        return report.fail(ErrWriteTrailer, "Failed to write trailer");
    return true;
}

bool DocumentObj::writeVersion(Interfaces::Stream& out, std::uint64_t& offset) noexcept
{
    const Ref<::String> version = versionToString(_version);
    if (!version)
        return report.line("Failed to convert version to string: ", _version);
    MemOutStrm line = keywordLine("%");
    line.append(*version);
    return writeLine(out, line, offset);
}

bool DocumentObj::writeObject(Interfaces::Stream& out, const PDF::Object& object, std::uint64_t& offset) noexcept
{
    const Ref<Value> value = object.value();
    if (!value)
        return report.line("Object has no value: ", object.asText());
    MemOutStrm header;
    header.appendNumber(object.id());
    header.append(' ');
    header.appendNumber(object.generation());
    header.append(' ');
    header.append(Syntax::objectKeyword);
    if (!writeLine(out, header, offset))
        return report.line("Failed to write header for object ", object.asText());
    if (!writeValue(out, value, offset))
        return report.line("Failed to write value of object ", object.asText());
    if (!writeLineEnding(out, offset))
        return false;
    MemOutStrm end = keywordLine(Syntax::objectEnd);
    if (!writeLine(out, end, offset))
        return report.line("Failed to write trailer for object ", object.asText());
    return true;
}

bool DocumentObj::writeValue(Interfaces::Stream& out, const Ref<Value>& value, std::uint64_t& offset) noexcept
{
    MemOutStrm text;
    if (!ValueWriter(*this, *_lineEnding, text).writeValue(value))
        return report.line("Failed to convert value to buffer");
    if (!writeElements(out, text.data(), text.size(), offset))
        return report.line("Failed to write buffer of size ", text.size());
    return true;
}

// The line, then the line ending: two writes.
bool DocumentObj::writeLine(Interfaces::Stream& out, MemOutStrm& line, std::uint64_t& offset) noexcept
{
    if (!writeElements(out, line.data(), line.size(), offset))
        return report.line("Failed to write string of length ", line.size());
    return writeLineEnding(out, offset);
}

bool DocumentObj::writeLineEnding(Interfaces::Stream& out, std::uint64_t& offset) noexcept
{
    if (_lineEnding->length() > longestLineEnding)
        Reporter::write(0, LogLevel::failure,
            {"ASSERT CONDITION _lineEnding->length() <= 2 FAILED IN LINE ", __LINE__, ", FUNCTION ",
                "Libraries::Files::PDF::DocumentObj::writeLine"});
    std::uint32_t ending[longestLineEnding];
    const std::size_t count = _lineEnding->copy(0, longestLineEnding, ending);
    if (!writeElements(out, ending, count, offset))
        return report.line("Failed to write line ending");
    return true;
}

bool DocumentObj::writeTrailer(
    Interfaces::Stream& out, const std::vector<WrittenObject>& written, std::uint64_t& offset) noexcept
{
    const std::uint64_t start = offset;
    if (!writeXref(out, written, offset))
        return false;
    MemOutStrm line = keywordLine(Syntax::trailerKeyword);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write trailer keyword");
    if (!_trailer->set(Keys::size, make<NumberObj>(static_cast<std::int64_t>(written.size() + 1), 0)))
        return report.line("Failed to update trailer dictionary Size entry");
    if (!writeValue(out, _trailer, offset))
        return report.line("Failed to write trailer dictionary");
    // The ending that closes the dictionary's line goes out with the keyword.
    line.clear();
    line.append(*_lineEnding);
    line.append(Syntax::startXrefKeyword);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write startxref keyword");
    line.clear();
    line.appendNumber(start);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write xref offset");
    line = keywordLine(Syntax::endMarker);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write EOF marker");
    return true;
}

// Deliberate: one subsection, whose rows are the objects in the order of their ids. A row belongs to an
// id by its place alone, so the table is right exactly when the ids leave no gap and the first of them
// follows that of the subsection by one.
bool DocumentObj::writeXref(
    Interfaces::Stream& out, const std::vector<WrittenObject>& written, std::uint64_t& offset) noexcept
{
    const bool isPadded = _lineEnding->length() < longestLineEnding;
    MemOutStrm line = keywordLine(Syntax::xrefKeyword);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write xref keyword");
    line.clear();
    line.appendNumber(_firstObjectId);
    line.append(' ');
    line.appendNumber(written.size() + 1);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write xref header");
    makeRow(line, 0, Syntax::highestGeneration, 'f', isPadded);
    if (!writeLine(out, line, offset))
        return report.line("Failed to write initial xref line");
    for (const WrittenObject& object : written) {
        makeRow(line, object.offset, object.generation, 'n', isPadded);
        if (!writeLine(out, line, offset))
            return report.line("Failed to write xref line");
    }
    return true;
}

} // namespace Libraries::Files::PDF
