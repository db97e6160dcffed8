// The operations, by this library.

#include <bench/Library.h>
#include <document/Document.h>
#include <document/Inspection.h>
#include <forms/Form.h>
#include <forms/Text.h>
#include <host/fields/Fill.h>
#include <host/files/MemoryStripe.h>
#include <host/pages/Place.h>
#include <platform/Mem.h>
#include <platform/Windows_1252.h>
#include <values/Array.h>
#include <values/Boolean.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/Number.h>
#include <values/Object.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>
#include <values/String.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Bench {

namespace {

namespace PDF = Libraries::Files::PDF;

void require(bool isDone, const char* words)
{
    if (!isDone)
        fail(std::string(words) + ", code " + std::to_string(Error::get()));
}

constexpr std::size_t blockSize = OutputFile::bufferSize; // the bytes that are read and written at a time
using Block = std::array<std::uint8_t, blockSize>;

constexpr std::size_t elementEnd = 0x2123; // behind the highest element that stands for a byte

// By element, -1 for one that stands for no byte; the last is for all from `elementEnd` on.
const std::array<std::int16_t, elementEnd + 1> byteOfElement = [] {
    std::array<std::int16_t, elementEnd + 1> table;
    table.fill(-1);
    using Libraries::Strings::Encodings::ANSI::Windows_1252;
    for (std::int16_t byte = 0; byte < 256; ++byte)
        table.at(Windows_1252::toCodePoint(static_cast<std::uint8_t>(byte))) = byte;
    return table;
}();

// The bytes that `count` elements stand for. False when one of them stands for none.
bool toBytes(const unsigned char* elements, std::uint64_t count, std::uint8_t* bytes)
{
    int signs = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint32_t element;
        Mem::copy(elements + i * sizeof element, &element, sizeof element);
        const int byte = byteOfElement[std::min<std::size_t>(element, elementEnd)];
        signs |= byte;
        bytes[i] = static_cast<std::uint8_t>(byte);
    }
    return signs >= 0;
}

// A file to be written, and neither synced nor renamed: the other libraries' files aren't either.
class Output final : public Object, public virtual Interfaces::Stream, public virtual Interfaces::ByteWriting {
public:
    explicit Output(const std::string& path) : _file(path) {}

    // Interfaces::Stream
    std::uint64_t elementSize() const noexcept override { return sizeof(std::uint32_t); }
    std::uint64_t read(BufferDesc&, std::uint64_t, std::uint32_t) noexcept override { return 0; }
    std::uint64_t write(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept override
    {
        const auto* elements = static_cast<const unsigned char*>(area.pointer) + area.offset;
        for (std::uint64_t done = 0; done < count;) {
            const std::uint64_t taken = std::min<std::uint64_t>(count - done, _block.size() - _used);
            if (!toBytes(elements + done * sizeof(std::uint32_t), taken, _block.data() + _used)) {
                Error::set(ErrInvalidArgument);
                return 0;
            }
            done += taken;
            _used += taken;
            if (_used == _block.size())
                flush();
        }
        return count;
    }
    // Interfaces::ByteWriting
    bool takesBytes() const noexcept override { return true; }
    std::uint64_t writeBytes(const void* bytes, std::uint64_t count) noexcept override
    {
        flush();
        _file.write(bytes, count);
        return count;
    }

    void close()
    {
        flush();
        _file.close();
    }

private:
    void flush() noexcept { _file.write(_block.data(), std::exchange(_used, 0)); }

    OutputFile _file;
    Block _block;
    std::size_t _used = 0;
};

Ref<PDF::Document> open(Bytes& bytes)
{
    Ref<PDF::Document> document = PDF::Document::create(make<Host::MemoryStripe>(std::move(bytes)));
    require(bool(document), "the file is refused");
    return document;
}

void save(const Ref<PDF::Document>& document, const Job& job)
{
    const Ref<Output> out = make<Output>(job.out);
    require(document->write(out), "the document can't be written");
    out->close();
}

void recompress(const Ref<PDF::Document>& document, PDF::Compression compression)
{
    require(document->recompress(compression), "the streams can't be recompressed");
}

void touch(const Ref<PDF::Value>& value, Tally& tally);

void touchAll(const PDF::Dictionary& dictionary, Tally& tally)
{
    const Ref<TVector<Ref<String>>> keys = dictionary.keys();
    for (const Ref<String>& key : *keys) {
        tally.textLength += key->length();
        touch(dictionary.find(key), tally);
    }
}

void touchNumber(const PDF::Number& number, Tally& tally)
{
    if (number.fracPart() != 0)
        ++tally.fractions;
    else
        tally.integerSum += static_cast<std::uint64_t>(number.intPart());
}

void touchString(const PDF::String& string, Tally& tally)
{
    if (const Ref<String> text = string.value())
        tally.textLength += text->length();
    else
        tally.textLength += string.data()->size();
}

void touch(const Ref<PDF::Value>& value, Tally& tally)
{
    ++tally.values;
    switch (value->type()) {
    case PDF::Value::Type::Name:
        tally.textLength += PDF::valueAs<PDF::Name>(value)->value()->length();
        break;
    case PDF::Value::Type::Boolean:
        tally.booleans += PDF::valueAs<PDF::Boolean>(value)->value();
        break;
    case PDF::Value::Type::Number:
        touchNumber(*PDF::valueAs<PDF::Number>(value), tally);
        break;
    case PDF::Value::Type::String:
        touchString(*PDF::valueAs<PDF::String>(value), tally);
        break;
    case PDF::Value::Type::ObjectRef:
        tally.idSum += PDF::valueAs<PDF::ObjectRef>(value)->id();
        break;
    case PDF::Value::Type::Dictionary:
        touchAll(*PDF::valueAs<PDF::Dictionary>(value), tally);
        break;
    case PDF::Value::Type::Stream:
        touchAll(*PDF::valueAs<PDF::Stream>(value)->dict(), tally);
        break;
    case PDF::Value::Type::Array: {
        const Ref<PDF::Array> array = PDF::valueAs<PDF::Array>(value);
        for (std::uint64_t i = 0, size = array->size(); i < size; ++i)
            touch(array->get(i), tally);
        break;
    }
    case PDF::Value::Type::Null:
    case PDF::Value::Type::Invalid:
        break;
    }
}

Tally walk(const Ref<PDF::Document>& document)
{
    Tally tally;
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        touch(object->value(), tally);
    return tally;
}

std::uint64_t readElements(Interfaces::Stripe& stripe, std::uint64_t count, std::uint8_t* bytes)
{
    static std::array<std::uint32_t, blockSize> elements;
    BufferDesc area = BufferDesc::plain(elements.data());
    const std::uint64_t got = stripe.read(area, count, waitForever);
    return toBytes(static_cast<const unsigned char*>(area.pointer), got, bytes) ? got : 0;
}

// Reads all of a stripe: as bytes, which is what the other libraries hand over, or where it has none as elements.
void readOut(Interfaces::Stripe& stripe, DecodedData& decoded, bool isChecked)
{
    static Block block;
    Interfaces::ByteReading* const reading = byteReadingOf(stripe);
    for (std::uint64_t left = stripe.size(); left > 0;) {
        const std::uint64_t count = std::min<std::uint64_t>(left, blockSize);
        const std::uint64_t got
            = reading ? reading->readBytes(block.data(), count) : readElements(stripe, count, block.data());
        require(got == count, "data can't be read");
        decoded.add(block.data(), count, isChecked);
        left -= count;
    }
}

} // namespace

void decode(Job& job)
{
    const Ref<PDF::Document> document = open(job.bytes);
    DecodedData decoded;
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document)) {
        const Ref<PDF::Stream> stream = PDF::valueAs<PDF::Stream>(object->value());
        if (!stream)
            continue;
        const Ref<Interfaces::Stripe> data = document->streamData(stream, true);
        require(bool(data), "a stream can't be decoded");
        readOut(*data, decoded, job.isChecked);
    }
    decoded.print(job.isChecked);
}

void openAndTouch(Job& job)
{
    walk(open(job.bytes)).print();
}

void walk(Job& job)
{
    const Ref<PDF::Document> document = open(job.bytes);
    measureWalk([&document] { return walk(document); });
}

void openAndSave(Job& job, StreamForm form)
{
    const Ref<PDF::Document> document = open(job.bytes);
    if (form == StreamForm::Plain || form == StreamForm::FlateAnew)
        recompress(document, PDF::Compression::None);
    if (form == StreamForm::Flate || form == StreamForm::FlateAnew)
        recompress(document, PDF::Compression::Flate);
    save(document, job);
}

void addBackground(Job& job)
{
    const Ref<PDF::Document> document = open(job.bytes);
    require(document->addBackground(open(job.foreign), PDF::BackgroundMode::AllPages), "no background can be added");
    save(document, job);
}

void placePage(Job& job)
{
    const Ref<PDF::Document> document = open(job.bytes);
    require(bool(Host::place(document, open(job.foreign))), "no page can be placed");
    save(document, job);
}

void fillForm(Job& job)
{
    const Ref<PDF::Document> document = open(job.bytes);
    const Ref<PDF::Form> form = document->form();
    require(bool(form), "there is no form");
    for (std::uint64_t i = 0; i < form->fieldCount(); ++i) {
        const Ref<PDF::Field> group = form->field(i);
        for (std::uint64_t j = 0; j < group->childCount(); ++j) {
            const Ref<PDF::Fields::Text> field = group->child(j).cast<PDF::Fields::Text>();
            const Ref<String> value = String::create(valueOfField(i, j).c_str());
            require(field && field->setValue(PDF::String::create(value)), "a field can't be filled");
        }
    }
    save(document, job);
}

void drawForm(Job& job)
{
    const Ref<PDF::Document> document = open(job.bytes);
    auto filler = Host::FormFiller::create(document);
    require(bool(filler), "the form can't be filled");
    const auto isFilled = [&filler](std::size_t group, std::size_t field) {
        const std::string name = "group-" + std::to_string(group);
        const auto refusal = filler->fill(
            name + ".field-" + std::to_string(group) + '-' + std::to_string(field), valueOfField(group, field));
        require(!refusal || refusal->reason == Host::Reason::Missing, "a field can't be filled");
        return !refusal;
    };
    for (std::size_t group = 0; isFilled(group, 0); ++group)
        for (std::size_t field = 1; isFilled(group, field); ++field) { }
    save(document, job);
}

} // namespace Bench
