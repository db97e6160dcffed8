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

// A file on its way out.
struct DocumentObj::Output {
    // What the table tells of an object that went out.
    struct Written {
        std::uint64_t offset; // of its header line
        std::uint16_t generation;
    };

    Interfaces::Stream& stream;
    std::uint64_t offset = 0; // the elements that went out
    std::vector<Written> written;
    MemOutStrm line; // these two are kept for their memory alone
    MemOutStrm value;

    bool write(const std::uint32_t* elements, std::uint64_t count) noexcept
    {
        BufferDesc area = BufferDesc::plain(const_cast<std::uint32_t*>(elements));
        if (stream.write(area, count, waitForever) != count)
            return false;
        offset += count;
        return true;
    }
    // The line, to be filled.
    MemOutStrm& newLine() noexcept
    {
        line.clear();
        return line;
    }
    // A line that is one keyword.
    const MemOutStrm& keyword(const char* keyword) noexcept
    {
        newLine().append(keyword);
        return line;
    }
};

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
    Output output{*out, 0, {}, {}, {}};
    if (!writeVersion(output))
        return report.fail(ErrWriteVersion, "Failed to write PDF version");
    std::vector<Ref<PDF::Object>> objects = _objects;
    const auto isBefore = [](const Ref<PDF::Object>& a, const Ref<PDF::Object>& b) { return a->id() < b->id(); };
    if (!std::is_sorted(objects.begin(), objects.end(), isBefore))
        std::sort(objects.begin(), objects.end(), isBefore);
    output.written.reserve(objects.size());
    for (const Ref<PDF::Object>& object : objects) {
        const std::uint64_t start = output.offset;
        if (!writeObject(output, *object))
            return report.fail(ErrWriteObject, "Failed to write object ", object->asText());
        output.written.push_back({start, object->generation()});
    }
    if (!writeTrailer(output))
        return report.fail(ErrWriteTrailer, "Failed to write trailer");
    return true;
}

bool DocumentObj::writeVersion(Output& out) noexcept
{
    const Ref<::String> version = versionToString(_version);
    if (!version)
        return report.line("Failed to convert version to string: ", _version);
    MemOutStrm& line = out.newLine();
    line.append('%');
    line.append(*version);
    return writeLine(out, line);
}

bool DocumentObj::writeObject(Output& out, const PDF::Object& object) noexcept
{
    const Ref<Value> value = object.value();
    if (!value)
        return report.line("Object has no value: ", object.asText());
    MemOutStrm& header = out.newLine();
    header.appendNumber(object.id());
    header.append(' ');
    header.appendNumber(object.generation());
    header.append(' ');
    header.append(Syntax::objectKeyword);
    if (!writeLine(out, header))
        return report.line("Failed to write header for object ", object.asText());
    if (!writeValue(out, value))
        return report.line("Failed to write value of object ", object.asText());
    if (!writeLineEnding(out))
        return false;
    if (!writeLine(out, out.keyword(Syntax::objectEnd)))
        return report.line("Failed to write trailer for object ", object.asText());
    return true;
}

bool DocumentObj::writeValue(Output& out, const Ref<Value>& value) noexcept
{
    out.value.clear();
    if (!ValueWriter(*this, *_lineEnding, out.value).writeValue(value))
        return report.line("Failed to convert value to buffer");
    if (!out.write(out.value.data(), out.value.size()))
        return report.line("Failed to write buffer of size ", out.value.size());
    return true;
}

// The line, then the line ending: two writes.
bool DocumentObj::writeLine(Output& out, const MemOutStrm& line) noexcept
{
    if (!out.write(line.data(), line.size()))
        return report.line("Failed to write string of length ", line.size());
    return writeLineEnding(out);
}

bool DocumentObj::writeLineEnding(Output& out) noexcept
{
    if (_lineEnding->length() > longestLineEnding)
        Reporter::write(0, LogLevel::failure,
            {"ASSERT CONDITION _lineEnding->length() <= 2 FAILED IN LINE ", __LINE__, ", FUNCTION ",
                "Libraries::Files::PDF::DocumentObj::writeLine"});
    std::uint32_t ending[longestLineEnding];
    const std::size_t count = _lineEnding->copy(0, longestLineEnding, ending);
    if (!out.write(ending, count))
        return report.line("Failed to write line ending");
    return true;
}

bool DocumentObj::writeTrailer(Output& out) noexcept
{
    const std::uint64_t start = out.offset;
    if (!writeXref(out))
        return false;
    if (!writeLine(out, out.keyword(Syntax::trailerKeyword)))
        return report.line("Failed to write trailer keyword");
    if (!_trailer->set(Keys::size, make<NumberObj>(static_cast<std::int64_t>(out.written.size() + 1), 0)))
        return report.line("Failed to update trailer dictionary Size entry");
    if (!writeValue(out, _trailer))
        return report.line("Failed to write trailer dictionary");
    // The ending that closes the dictionary's line goes out with the keyword.
    MemOutStrm& line = out.newLine();
    line.append(*_lineEnding);
    line.append(Syntax::startXrefKeyword);
    if (!writeLine(out, line))
        return report.line("Failed to write startxref keyword");
    line.clear();
    line.appendNumber(start);
    if (!writeLine(out, line))
        return report.line("Failed to write xref offset");
    if (!writeLine(out, out.keyword(Syntax::endMarker)))
        return report.line("Failed to write EOF marker");
    return true;
}

// Deliberate: one subsection, whose rows are the objects in the order of their ids. A row belongs to an
// id by its place alone, so the table is right exactly when the ids leave no gap and the first of them
// follows that of the subsection by one.
bool DocumentObj::writeXref(Output& out) noexcept
{
    const bool isPadded = _lineEnding->length() < longestLineEnding;
    if (!writeLine(out, out.keyword(Syntax::xrefKeyword)))
        return report.line("Failed to write xref keyword");
    MemOutStrm& line = out.newLine();
    line.appendNumber(_firstObjectId);
    line.append(' ');
    line.appendNumber(out.written.size() + 1);
    if (!writeLine(out, line))
        return report.line("Failed to write xref header");
    makeRow(line, 0, Syntax::highestGeneration, 'f', isPadded);
    if (!writeLine(out, line))
        return report.line("Failed to write initial xref line");
    for (const Output::Written& object : out.written) {
        makeRow(line, object.offset, object.generation, 'n', isPadded);
        if (!writeLine(out, line))
            return report.line("Failed to write xref line");
    }
    return true;
}

} // namespace Libraries::Files::PDF
