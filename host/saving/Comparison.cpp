#include <host/saving/Comparison.h>

#include <document/ExactWriting.h>
#include <document/Inspection.h>
#include <host/base/Characters.h>
#include <host/base/ErrorWords.h>
#include <host/base/Keys.h>
#include <host/files/MemoryStripe.h>
#include <host/saving/ShiftedRows.h>
#include <host/saving/UnwritableName.h>
#include <host/streams/SameData.h>
#include <platform/CharReader.h>
#include <platform/StrConv.h>
#include <platform/StringUtil.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Exact.h>
#include <values/Name.h>
#include <values/Object.h>
#include <values/Stream.h>

#include <algorithm>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

// How the file was written: by `writeExactly`, or by `Document::write`.
enum class Form { Exact, Plain };

// One side of the comparison.
struct Side {
    Ref<Document> document;
    Ref<Value> value;
};

bool isSameText(const Side& a, const Side& b)
{
    const auto left = writtenText(a.document, a.value);
    const auto right = writtenText(b.document, b.value);
    return left && right && left->size() == right->size()
        && Mem::equal(left->data(), right->data(), left->size() * sizeof(*left->data()));
}

bool isSameShape(const Ref<Value>& a, const Ref<Value>& b);

bool isSameShape(const Dictionary& a, const Dictionary& b)
{
    const auto keys = keysOf(a);
    return keysOf(b).size() == keys.size()
        && std::all_of(
            keys.begin(), keys.end(), [&](const auto& key) { return isSameShape(a.find(key), b.find(key)); });
}

// Whether two values are made of the same values, whatever the numbers and strings among them are. What was one name
// may be read back as several values, from the same text.
bool isSameShape(const Ref<Value>& a, const Ref<Value>& b)
{
    if (!a || !b || a->type() != b->type())
        return false;
    if (const auto name = valueAs<Name>(a))
        return name->equal(b);
    if (const auto stream = valueAs<Stream>(a))
        return isSameShape(stream->dict(), valueAs<Stream>(b)->dict());
    if (const auto dictionary = valueAs<Dictionary>(a))
        return isSameShape(*dictionary, *valueAs<Dictionary>(b));
    const auto array = valueAs<Array>(a);
    const auto other = valueAs<Array>(b);
    bool isSame = !array || array->size() == other->size();
    for (std::uint64_t i = 0; array && isSame && i < array->size(); ++i)
        isSame = isSameShape(array->get(i), other->get(i));
    return isSame;
}

bool isSameValue(const Side& a, const Side& b)
{
    if (!isSameExactly(a.value, b.value))
        return false;
    const Ref<Stream> stream = valueAs<Stream>(a.value);
    return !stream
        || haveSameData(a.document->streamData(stream, false), b.document->streamData(valueAs<Stream>(b.value), false));
}

// A value in the form in which the file has it.
Ref<TConstArray<std::uint32_t>> textOf(const Side& side, Form form)
{
    return form == Form::Exact ? exactText(side.document, side.value) : writtenText(side.document, side.value);
}

bool isSame(const Side& a, const Side& b, Form form)
{
    return form == Form::Exact ? isSameValue(a, b) : isSameText(a, b) && isSameShape(a.value, b.value);
}

// What is written of a value before its data, if it is a stream; else all of it.
Ref<Value> withoutData(const Ref<Value>& value)
{
    const Ref<Stream> stream = valueAs<Stream>(value);
    return stream ? Ref<Value>(stream->dict()) : value;
}

bool beginsWithLineFeed(const Ref<Document>& document, const Ref<Value>& value)
{
    const Ref<Stream> stream = valueAs<Stream>(value);
    const Ref<Interfaces::Stripe> data = stream ? document->streamData(stream, false) : nullptr;
    if (!data)
        return false;
    const std::uint64_t position = data->tell();
    std::uint32_t first = 0;
    BufferDesc area = BufferDesc::plain(&first);
    const bool isRead = data->seek(0) == 0 && data->read(area, 1, waitForever) == 1;
    data->seek(position);
    return isRead && first == '\n';
}

// Why a value is not read back as the file has it, as far as that is known.
std::string reasonFor(const Ref<Document>& document, const Ref<Value>& value, Form form)
{
    const std::string names = unwritableName(value);
    if (!names.empty() || form == Form::Exact)
        return names;
    // Two in a row represent one in a string.
    const std::uint32_t doubled[] = {'\\', '\\'};
    const auto text = writtenText(document, withoutData(value));
    const std::uint32_t* end = text ? text->data() + text->size() : nullptr;
    if (text && std::search(text->data(), end, doubled, std::end(doubled)) != end)
        return ": a string in it has a backslash, which is written as two and read back differently";
    if (lineEndingOf(document)->equals("\r") && beginsWithLineFeed(document, value))
        return ": its data begins with a line feed, which is taken for a part of the line ending CR before it";
    return {};
}

Refusal difference(std::string message, std::uint32_t code = 0)
{
    return {Reason::Difference, std::move(message), code};
}

Refusal differs(const std::string& what, const Side& side, Form form)
{
    return difference(
        what + " would not be read back as it is written" + reasonFor(side.document, side.value, form));
}

// The number that the table of a written file begins with; none when it can't be found.
std::optional<unsigned long long> firstRow(const Ref<FileStripe>& written)
{
    constexpr std::uint64_t maxTail = 64; // from startxref to the end
    const Ref<CharReader> lines = CharReader::create(written, 0);
    written->seek(written->size() - std::min(maxTail, written->size()));
    Ref<::String> line = lines->readLine();
    while (line && !line->equals("startxref"))
        line = lines->readLine();
    unsigned long long offset = 0;
    if (!StrConv::num(lines->readLine(), &offset, nullptr))
        return {};
    written->seek(offset);
    lines->readLine(); // the keyword
    const auto header = StringUtil::split(lines->readLine(), ' ', 0);
    unsigned long long first = 0;
    if (!header || !StrConv::num(header->get(0), &first, nullptr))
        return {};
    return first;
}

// A file that holds a value as its only object, number 1.
std::vector<std::uint8_t> fileOfOne(const Side& side, Form form)
{
    std::vector<std::uint8_t> bytes;
    std::string eol;
    lineEndingOf(side.document)->forEach([&eol](char32_t c) { eol += static_cast<char>(c); });
    const auto add = [&bytes](const std::string& text) { bytes.insert(bytes.end(), text.begin(), text.end()); };
    const auto place = [&bytes] { return std::to_string(bytes.size()); };
    add("%PDF-1.7" + eol);
    const std::string object = place();
    add("1 0 obj" + eol);
    const auto text = textOf(side, form);
    for (std::size_t i = 0; text && i < text->size(); ++i)
        bytes.push_back(static_cast<std::uint8_t>(byteOfElement(text->data()[i])));
    add(eol + "endobj" + eol);
    const std::string table = place();
    add("xref" + eol + "1 1" + eol + object + " 0 n" + eol + "trailer" + eol + "<< >>" + eol);
    add("startxref" + eol + table + eol + "%%EOF" + eol);
    return bytes;
}

bool canBeRead(const Side& side, Form form)
{
    return Document::create(make<MemoryStripe>(fileOfOne(side, form))) != nullptr;
}

// Looks for what keeps the file from being opened: each object is tried in a file of its own.
Refusal whyUnreadable(const Ref<Document>& document, const WrittenFile& written, std::uint32_t code)
{
    const Form form = written.trailer ? Form::Exact : Form::Plain;
    if (const auto first = form == Form::Plain ? firstRow(written.file) : std::nullopt)
        if (const auto shifted = shiftedRows(document, *first); !shifted.empty())
            return difference(shiftedRowMessage(shifted.front()));
    const std::string words = " could not be read back";
    for (const auto& object : objectsAsWritten(document))
        if (!canBeRead({document, withoutData(object->value())}, form))
            return difference(nameOf(*object) + words + reasonFor(document, object->value(), form), code);
    const Ref<Value> trailer = written.trailer ? written.trailer : document->trailer();
    if (!canBeRead({document, trailer}, form))
        return difference("the trailer" + words + reasonFor(document, trailer, form), code);
    return difference("the new file" + words + ": " + std::string(errorWords(code)), code);
}

std::optional<Refusal> comparePlainTrailers(const Ref<Document>& before, const Ref<Document>& after)
{
    const Ref<Dictionary> written = before->trailer();
    const Ref<Dictionary> read = after->trailer();
    for (const auto& keys : {keysOf(*written), keysOf(*read)})
        for (const auto& key : keys)
            if (!key->equals("Size")
                && !isSame({before, written->find(key)}, {after, read->find(key)}, Form::Plain))
                return differs("the trailer", {before, written}, Form::Plain);
    return {};
}

std::optional<Refusal> compareObjects(const Ref<Document>& before, const Ref<Document>& after, Form form)
{
    const auto written = objectsAsWritten(before);
    const auto read = objectsAsWritten(after);
    for (std::size_t i = 0; i < written.size(); ++i) {
        const PDF::Object& object = *written[i];
        if (i >= read.size() || read[i]->id() != object.id() || read[i]->generation() != object.generation())
            return difference(nameOf(object) + " is missing from the new file");
        if (!isSame({before, object.value()}, {after, read[i]->value()}, form))
            return differs(nameOf(object), {before, object.value()}, form);
    }
    if (read.size() > written.size())
        return difference(nameOf(*read[written.size()]) + " is in the new file, but was not written");
    return {};
}

} // namespace

std::optional<Refusal> findDifference(const Ref<Document>& document, const WrittenFile& written) noexcept
{
    const Ref<Document> again = Document::create(written.file);
    if (!again)
        return whyUnreadable(document, written, Error::get());
    if (again->version() != document->version())
        return difference("the version would not be read back as it is written");
    if (!lineEndingOf(again)->equals(lineEndingOf(document)))
        return difference("the line ending would not be read back as it is written");
    if (written.trailer && !isSameExactly(written.trailer, again->trailer()))
        return differs("the trailer", {document, written.trailer}, Form::Exact);
    if (!written.trailer)
        if (auto refusal = comparePlainTrailers(document, again))
            return refusal;
    return compareObjects(document, again, written.trailer ? Form::Exact : Form::Plain);
}

} // namespace Host
