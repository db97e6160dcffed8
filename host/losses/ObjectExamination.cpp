#include <host/losses/ObjectExamination.h>

#include <document/ExactWriting.h>
#include <document/Syntax.h>
#include <host/base/Characters.h>
#include <host/losses/FormatComparison.h>
#include <platform/Limits.h>
#include <values/Dictionary.h>
#include <values/Object.h>
#include <values/Stream.h>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

using Kind = FormatValue::Kind;

// An object as the format means it.
struct Source {
    std::uint64_t offset = 0; // of its header
    FormatValue value;
    bool isStream = false;
    std::uint64_t dataOffset = 0; // of a stream
    std::uint64_t rest = 0;       // the place of something between value and end of the object; 0 for none
};

// After "stream": the data begins after one line ending, and blanks before that.
std::uint64_t findData(SourceText& text, std::uint64_t afterKeyword)
{
    std::uint64_t position = afterKeyword;
    while (text.at(position) == ' ' || text.at(position) == '\t')
        ++position;
    if (text.at(position) == '\r')
        return position + (text.at(position + 1) == '\n' ? 2 : 1);
    return text.at(position) == '\n' ? position + 1 : afterKeyword;
}

// Whether an object without an end of its own ends here: before the next one, or after all of them.
bool isAtEnd(FormatReader& reader, SourceText& text)
{
    reader.skipSpace();
    const std::uint64_t here = reader.position();
    FormatReader next(text, here);
    std::uint64_t number = 0;
    return text.at(here) == SourceText::end || text.isAt(here, Syntax::xrefKeyword)
        || text.isAt(here, Syntax::startXrefKeyword) || text.isAt(here, Syntax::trailerKeyword)
        || (next.readCount(number) && next.readCount(number) && next.skipKeyword("obj"));
}

Source readSource(FileExamination& file, std::uint64_t offset)
{
    file.text().moveTo(offset);
    FormatReader reader(file.text(), offset);
    Source source;
    source.offset = offset;
    std::uint64_t number = 0;
    if (!reader.readCount(number) || !reader.readCount(number) || !reader.skipKeyword("obj"))
        return source;
    source.value = reader.readValue();
    source.isStream = source.value.kind == Kind::Dictionary && reader.skipKeyword(Syntax::streamKeyword);
    if (source.isStream)
        source.dataOffset = findData(file.text(), reader.position());
    else if (reader.skipKeyword(Syntax::objectEnd))
        reader.skipSpace();
    else if (!isAtEnd(reader, file.text()))
        source.rest = reader.position();
    file.addComments(reader.takeComments());
    return source;
}

// Whether the value's first piece also appears before it, where the library finds it on a common line.
bool isFoundEarly(SourceText& text, const Source& source)
{
    const std::string before = text.slice(source.offset, source.value.begin, Limits::maxLossText);
    std::string piece;
    for (std::uint64_t position = source.value.begin; piece.size() < before.size() && text.at(position) > ' ';)
        piece += static_cast<char>(text.at(position++));
    return before.find(piece) != before.npos;
}

std::string textOf(const SourceText& text, const FormatValue& value)
{
    return text.slice(value.begin, value.end, Limits::maxLossText);
}

// The beginning of data, as far as it was looked at.
std::string excerptAt(const SourceText& text, std::uint64_t offset)
{
    return text.slice(offset, offset + Limits::maxDataExcerpt, Limits::maxDataExcerpt);
}

void compareValue(FileExamination& file, const Ref<Value>& value, const Source& source)
{
    const FormatValue& meant = source.value;
    const auto text = exactText(file.document(), value);
    if (!text) {
        file.add(LossKind::Unwritable, meant.begin, textOf(file.text(), meant));
        return;
    }
    SourceText writtenBytes(bytesOf(*text));
    const FormatValue written = FormatReader(writtenBytes, 0).readValue();
    FormatComparison comparison(file.text(), writtenBytes, file.lossTemplate(), file.losses());
    const bool isOther = meant.kind != written.kind || meant.text != written.text;
    if (isOther && meant.kind == Kind::Reference && written.kind == Kind::Number)
        comparison.add(LossKind::ObjectReference, meant, written);
    else if (isOther && isFoundEarly(file.text(), source))
        comparison.add(LossKind::EarlyValue, meant, written);
    else
        comparison.compare(meant, written);
}

// The stream ends after the data that Length counts, and so does an object without the keyword for its end.
// Where it doesn't, readers that look for the end find more data, or less.
void examineDataEnd(FileExamination& file, std::uint64_t end)
{
    SourceText& text = file.text();
    text.moveTo(end);
    std::uint64_t position = end;
    while (FormatReader::isSpace(text.at(position)))
        ++position;
    FormatReader reader(text, position);
    bool isEnd = text.isAt(position, Syntax::streamEnd) && reader.skipKeyword(Syntax::streamEnd);
    isEnd = isEnd && (!FormatReader::isRegular(text.at(reader.position()))
        || text.isAt(reader.position(), Syntax::objectEnd));
    const bool isObjectEnd = (isEnd || text.isAt(position, Syntax::objectEnd)) && reader.skipKeyword(Syntax::objectEnd);
    if (!isEnd && !(isObjectEnd && isAtEnd(reader, text)))
        file.add(LossKind::StreamData, end, excerptAt(text, end));
    if (isObjectEnd)
        reader.skipSpace();
    file.addComments(reader.takeComments());
}

void examineData(FileExamination& file, const Ref<Stream>& stream, const Source& source)
{
    SourceText& text = file.text();
    const Ref<Interfaces::Stripe> data = file.document()->streamData(stream, false);
    if (!data) {
        const FormatValue* length = source.value.find("Length");
        file.add(LossKind::Unwritable, length ? length->begin : source.value.begin,
            length ? "/Length " + textOf(text, *length) : "");
        return;
    }
    const std::uint64_t offset = source.dataOffset;
    if (stream->strmOfs() != offset)
        file.add(LossKind::StreamData, offset, excerptAt(text, offset));
    else
        examineDataEnd(file, stream->strmOfs() + data->size());
}

} // namespace

std::string bytesOf(const TConstArray<std::uint32_t>& elements) noexcept
{
    std::string bytes;
    bytes.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        bytes += static_cast<char>(byteOfElement(elements.data()[i]));
    return bytes;
}

void examineObject(FileExamination& file, const PDF::Object& object) noexcept
{
    file.setObject(object);
    const auto row = file.chain().rows().find(object.id());
    const Source source = row == file.chain().rows().end() ? Source() : readSource(file, row->second.offset);
    const Ref<Stream> stream = valueAs<Stream>(object.value());
    const std::size_t lossCount = file.losses().all().size();
    compareValue(file, stream ? Ref<Value>(stream->dict()) : object.value(), source);
    if (source.rest != 0 && file.losses().all().size() == lossCount)
        file.add(LossKind::OtherValue, source.rest, excerptAt(file.text(), source.rest));
    file.addLostReferences(source.value);
    const FormatValue* type = source.isStream ? source.value.find("Type") : nullptr;
    if (type && type->isName("ObjStm") && !file.chain().isWhole()) // else nothing leads to the objects in it
        file.add(LossKind::ObjectStream, source.value.begin, textOf(file.text(), source.value));
    const std::uint64_t end = source.value.end;
    if (source.isStream != bool(stream))
        file.add(LossKind::StreamData, end, excerptAt(file.text(), end));
    else if (stream)
        examineData(file, stream, source);
}

} // namespace Host
