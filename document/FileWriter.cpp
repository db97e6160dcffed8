#include <document/FileWriter.h>

#include <document/Keys.h>
#include <document/Report.h>
#include <document/Syntax.h>
#include <document/ValueWriter.h>
#include <document/Version.h>
#include <values/Dictionary.h>
#include <values/NumberObj.h>

#include <algorithm>

namespace Libraries::Files::PDF {

namespace {

constexpr std::size_t maxLineEnding = 2;

// A list of its own, so that the table may grow while it is written.
std::vector<Ref<Object>> inOrderOfIds(std::vector<Ref<Object>> objects)
{
    const auto isBefore = [](const Ref<Object>& a, const Ref<Object>& b) { return a->id() < b->id(); };
    if (!std::is_sorted(objects.begin(), objects.end(), isBefore))
        std::sort(objects.begin(), objects.end(), isBefore);
    return objects;
}

} // namespace

bool FileWriter::write(const FileParts& parts) noexcept
{
    writeHeader(parts.version);
    if (_hasFailed)
        return report.fail(ErrWriteVersion, "Failed to write PDF version");
    const std::vector<Ref<Object>> objects = inOrderOfIds(parts.objects);
    _rows.reserve(objects.size() + 1);
    _rows.push_back({0, Syntax::maxGeneration, 'f'});
    for (const Ref<Object>& object : objects) {
        _rows.push_back({_offset, object->generation(), 'n'});
        writeObject(*object);
        if (_hasFailed)
            return report.fail(ErrWriteObject, "Failed to write object ", object->asText());
    }
    const std::uint64_t tableOffset = _offset;
    writeTable(parts.firstObjectId);
    writeTrailer(parts.trailer, tableOffset);
    if (_hasFailed)
        return report.fail(ErrWriteTrailer, "Failed to write trailer");
    return true;
}

void FileWriter::writeHeader(std::uint32_t version) noexcept
{
    const Ref<::String> text = versionToString(version);
    if (!text)
        return fail("Failed to convert version to string: ", version);
    MemOutStrm& line = newLine();
    line.append('%');
    line.append(*text);
    writeLine(line, {});
}

void FileWriter::writeObject(const Object& object) noexcept
{
    const Ref<Value> value = object.value();
    if (!value)
        return fail("Object has no value: ", object.asText());
    MemOutStrm& header = newLine();
    header.appendNumber(object.id());
    header.append(' ');
    header.appendNumber(object.generation());
    header.append(' ');
    header.append(Syntax::objectKeyword);
    writeLine(header, {"Failed to write header for object ", &object});
    writeValue(value, {"Failed to write value of object ", &object});
    writeLineEnding();
    writeLine(keyword(Syntax::objectEnd), {"Failed to write trailer for object ", &object});
}

// Deliberate: one subsection, whose rows are the objects in the order of their ids. A row belongs to an
// id by its place alone, so the table is right exactly when the ids leave no gap and the first of them
// follows that of the subsection by one.
void FileWriter::writeTable(std::uint32_t firstObjectId) noexcept
{
    writeLine(keyword(Syntax::xrefKeyword), {"Failed to write xref keyword"});
    MemOutStrm& header = newLine();
    header.appendNumber(firstObjectId);
    header.append(' ');
    header.appendNumber(_rows.size());
    writeLine(header, {"Failed to write xref header"});
    for (const Row& row : _rows)
        writeRow(row, {&row == &_rows.front() ? "Failed to write initial xref line" : "Failed to write xref line"});
}

void FileWriter::writeTrailer(const Ref<Dictionary>& trailer, std::uint64_t tableOffset) noexcept
{
    writeLine(keyword(Syntax::trailerKeyword), {"Failed to write trailer keyword"});
    updateSize(*trailer);
    writeValue(trailer, {"Failed to write trailer dictionary"});
    // The ending that closes the dictionary's line goes out with the keyword.
    MemOutStrm& start = newLine();
    start.append(_lineEnding);
    start.append(Syntax::startXrefKeyword);
    writeLine(start, {"Failed to write startxref keyword"});
    MemOutStrm& offset = newLine();
    offset.appendNumber(tableOffset);
    writeLine(offset, {"Failed to write xref offset"});
    writeLine(keyword(Syntax::endMarker), {"Failed to write EOF marker"});
}

// The line, then the line ending: two writes.
void FileWriter::writeLine(const MemOutStrm& line, const Message& failure) noexcept
{
    if (_hasFailed)
        return;
    if (!put(line.data(), line.size()))
        fail("Failed to write string of length ", line.size());
    writeLineEnding();
    endStep(failure);
}

void FileWriter::writeLineEnding() noexcept
{
    if (_hasFailed)
        return;
    if (_lineEnding.length() > maxLineEnding)
        Reporter::write(0, LogLevel::failure,
            {"ASSERT CONDITION _lineEnding->length() <= 2 FAILED IN LINE ", __LINE__, ", FUNCTION ",
                "Libraries::Files::PDF::DocumentObj::writeLine"});
    std::uint32_t ending[maxLineEnding];
    const std::size_t count = _lineEnding.copy(0, maxLineEnding, ending);
    if (!put(ending, count))
        fail("Failed to write line ending");
}

void FileWriter::writeValue(const Ref<Value>& value, const Message& failure) noexcept
{
    if (_hasFailed)
        return;
    _value.clear();
    const bool isText = ValueWriter(_document, _lineEnding, Dialect::Plain, _value, _bytesOut ? this : nullptr).writeValue(value);
    if (!isText && !_hasFailed)
        fail("Failed to convert value to buffer");
    if (isText)
        send(_value);
    endStep(failure);
}

// Each row has 20 characters, those of the line ending included.
void FileWriter::writeRow(const Row& row, const Message& failure) noexcept
{
    if (_hasFailed)
        return;
    MemOutStrm& line = newLine();
    line.appendNumber(row.offset, Syntax::offsetDigits);
    line.append(' ');
    line.appendNumber(row.generation, Syntax::generationDigits);
    line.append(' ');
    line.append(row.kind);
    if (_lineEnding.length() < maxLineEnding)
        line.append(' ');
    writeLine(line, failure);
}

void FileWriter::updateSize(Dictionary& trailer) noexcept
{
    if (_hasFailed)
        return;
    if (!trailer.set(Keys::size, make<NumberObj>(static_cast<std::int64_t>(_rows.size()), 0)))
        fail("Failed to update trailer dictionary Size entry");
}

bool FileWriter::send(MemOutStrm& text) noexcept
{
    if (!put(text.data(), text.size()))
        fail("Failed to write buffer of size ", text.size());
    text.clear();
    return !_hasFailed;
}

bool FileWriter::send(const std::uint8_t* bytes, std::uint64_t count) noexcept
{
    if (_bytesOut->writeBytes(bytes, count) != count)
        fail("Failed to write buffer of size ", count);
    _offset += count;
    return !_hasFailed;
}

bool FileWriter::put(const std::uint32_t* elements, std::uint64_t count) noexcept
{
    BufferDesc area = BufferDesc::plain(const_cast<std::uint32_t*>(elements));
    if (_out.write(area, count, waitForever) != count)
        return false;
    _offset += count;
    return true;
}

template <class... Pieces>
void FileWriter::fail(const Pieces&... pieces) noexcept
{
    _hasFailed = true;
    report.line(pieces...);
}

// Tells which step it was that failed.
void FileWriter::endStep(const Message& failure) noexcept
{
    if (_hasFailed && failure.text)
        report.line(failure.text, failure.object ? failure.object->asText() : nullptr);
}

// The line, to be filled.
MemOutStrm& FileWriter::newLine() noexcept
{
    _line.clear();
    return _line;
}

// A line that is one keyword.
const MemOutStrm& FileWriter::keyword(const char* keyword) noexcept
{
    newLine().append(keyword);
    return _line;
}

} // namespace Libraries::Files::PDF
