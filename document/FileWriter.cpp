#include <document/FileWriter.h>

#include <document/FileReader.h>
#include <document/Keys.h>
#include <document/Report.h>
#include <document/Syntax.h>
#include <document/ValueWriter.h>
#include <document/Version.h>
#include <platform/Limits.h>
#include <values/KindCast.h>

#include <algorithm>
#include <utility>

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

// A dictionary of its own with the same entries.
Ref<Dictionary> shallowCopy(const Dictionary& dictionary)
{
    DictionaryObj::Entries entries;
    const auto keys = dictionary.keys();
    for (const Ref<::String>& key : *keys)
        entries.push_back({key, dictionary.find(key)});
    return make<DictionaryObj>(std::move(entries));
}

// The trailer's `ID`, if it is the two strings that it should be.
Ref<Array> identifierIn(const Dictionary& trailer)
{
    constexpr std::uint64_t partsOfId = 2;
    const Ref<Array> id = valueAs<Array>(trailer.find(Keys::id));
    const bool isUsable = id && id->size() == partsOfId && valueAs<String>(id->get(0)) && valueAs<String>(id->get(1));
    return isUsable ? id : nullptr;
}

} // namespace

bool FileWriter::write(const FileParts& parts) noexcept
{
    const std::vector<Ref<Object>> objects = inOrderOfIds(parts.objects);
    _trailer = parts.trailer;
    if (parts.exact && !begin(parts, objects))
        return false;
    return writeParts(parts, objects);
}

bool FileWriter::writeParts(const FileParts& parts, const std::vector<Ref<Object>>& objects) noexcept
{
    writeHeader(parts.version);
    if (_hasFailed)
        return report.fail(ErrWriteVersion, "Failed to write PDF version");
    _rows.reserve(objects.size() + 1);
    if (!_exact)
        _rows.push_back({0, Syntax::maxGeneration, 'f'});
    for (const Ref<Object>& object : objects) {
        if (_exact)
            addFreeRows(object->id());
        _rows.push_back({_offset, object->generation(), 'n'});
        writeObject(*object);
        if (_hasFailed)
            return report.fail(ErrWriteObject, "Failed to write object ", object->asText());
    }
    if (_exact) {
        addFreeRows(std::max<std::uint32_t>(_exact->nextObjectId, 1));
        linkFreeRows(_exact->freeRows);
    }
    const std::uint64_t tableOffset = _offset;
    writeTable(parts.firstObjectId);
    writeTrailer(tableOffset);
    if (_hasFailed)
        return report.fail(ErrWriteTrailer, "Failed to write trailer");
    return true;
}

// False when the table would need too many free rows.
bool FileWriter::begin(const FileParts& parts, const std::vector<Ref<Object>>& objects) noexcept
{
    _exact = parts.exact;
    const std::uint64_t last = objects.empty() ? 0 : objects.back()->id();
    const std::uint64_t rows = std::max<std::uint64_t>(last + 1, _exact->nextObjectId);
    if (rows - objects.size() > Limits::maxFreeRows(_exact->sourceSize))
        return report.fail(ErrOutOfRange, "Ids leave too large gaps for a table; rows: ", rows);
    _trailer = shallowCopy(*parts.trailer);
    if (!_exact->isIdKept && identifierIn(*_trailer))
        _hash.emplace();
    return true;
}

// Free rows for the ids before `end` that have no row.
void FileWriter::addFreeRows(std::uint64_t end) noexcept
{
    while (_rows.size() < end)
        _rows.push_back({0, FreeRow::usualGeneration(static_cast<std::uint32_t>(_rows.size())), 'f'});
}

// Each free row leads to the next one, and the last one to row 0.
void FileWriter::linkFreeRows(const std::vector<FreeRow>& known) noexcept
{
    for (const FreeRow& row : known)
        if (row.id < _rows.size() && _rows[row.id].kind == 'f')
            _rows[row.id].generation = row.generation;
    std::uint64_t next = 0;
    for (std::size_t id = _rows.size(); id-- != 0;)
        if (_rows[id].kind == 'f')
            _rows[id].offset = std::exchange(next, id);
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
    // Tells programs that pass files on that this one isn't text.
    constexpr std::u32string_view binaryMark = U"%\u00E2\u00E3\u00CF\u00D3";
    if (_exact) {
        newLine().append(binaryMark);
        writeLine(_line, {});
    }
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
    writeValue(value, _exact ? Dialect::Exact : Dialect::Plain, {"Failed to write value of object ", &object});
    writeLineEnding();
    writeLine(keyword(Syntax::objectEnd), {"Failed to write trailer for object ", &object});
}

// Deliberate: one subsection, whose rows in a plain file are the objects in the order of their ids. A row belongs
// to an id by its place alone, so that table is right exactly when the ids leave no gap and the first of them
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

void FileWriter::writeTrailer(std::uint64_t tableOffset) noexcept
{
    if (_hash)
        updateId();
    writeLine(keyword(Syntax::trailerKeyword), {"Failed to write trailer keyword"});
    updateSize();
    writeValue(_trailer, _exact ? Dialect::ExactTrailer : Dialect::Plain, {"Failed to write trailer dictionary"});
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

void FileWriter::writeValue(const Ref<Value>& value, Dialect dialect, const Message& failure) noexcept
{
    if (_hasFailed)
        return;
    _value.clear();
    ValueWriter writer(_document, _lineEnding, dialect, _value, _bytesOut ? this : nullptr,
        _exact ? &_exact->sources : nullptr);
    const bool isText = writer.writeValue(value);
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

// The second part of the identifier tells files with the same first part from each other.
void FileWriter::updateId() noexcept
{
    const auto content = _hash->value();
    Ref<Value> part = make<StringObj>(TConstArray<std::uint8_t>::create(content.data(), content.size()));
    _trailer->set(Keys::id, Array::create({identifierIn(*_trailer)->get(0), std::move(part)}));
    _hash.reset();
}

void FileWriter::updateSize() noexcept
{
    if (_hasFailed)
        return;
    if (!_trailer->set(Keys::size, make<NumberObj>(static_cast<std::int64_t>(_rows.size()), 0)))
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
    if (_hash)
        _hash->add(bytes, count);
    _offset += count;
    return !_hasFailed;
}

bool FileWriter::put(const std::uint32_t* elements, std::uint64_t count) noexcept
{
    BufferDesc area = BufferDesc::plain(const_cast<std::uint32_t*>(elements));
    if (_out.write(area, count, waitForever) != count)
        return false;
    if (_hash)
        _hash->add(elements, count);
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
