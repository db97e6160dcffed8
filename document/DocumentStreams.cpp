#include <document/DocumentObj.h>

#include <document/Keys.h>
#include <document/Lookup.h>
#include <document/Report.h>
#include <document/Resolve.h>
#include <document/StreamCopy.h>
#include <document/StreamPump.h>
#include <platform/MemoryStream.h>
#include <platform/Windows_1252.h>
#include <platform/ZlibFilter.h>
#include <stripes/ByteElements.h>
#include <stripes/Convert.h>
#include <stripes/SubStripe.h>
#include <values/DictionaryObj.h>
#include <values/FilterEntry.h>
#include <values/NumberObj.h>
#include <values/ObjectRef.h>
#include <values/StreamObj.h>

// Stream data. It passes through the filters as bytes, while the stripes that users see have elements: where
// the file gives no bytes, a converter crosses over.

namespace Libraries::Files::PDF {

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;

struct ToByte {
    std::uint8_t operator()(std::uint32_t codePoint) const noexcept { return Windows_1252::toByte(codePoint); }
};
struct ToCodePoint {
    std::uint32_t operator()(std::uint8_t byte) const noexcept { return Windows_1252::toCodePoint(byte); }
};
using ByteConverter = Utils::Convert<std::uint32_t, std::uint8_t, ToByte, ToCodePoint>;

// A stripe of elements that gives its bytes, as a stream of them.
class GivenBytes final : public ::Object, public virtual Interfaces::Stream {
public:
    GivenBytes(Ref<Interfaces::Stripe> elements, Interfaces::ByteReading& reading) noexcept
        : _elements(std::move(elements)), _reading(reading)
    {
    }
    std::uint64_t elementSize() const noexcept override { return sizeof(std::uint8_t); }
    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t) noexcept override
    {
        return _reading.readBytes(static_cast<unsigned char*>(area.pointer) + area.offset, count);
    }
    std::uint64_t write(BufferDesc&, std::uint64_t, std::uint32_t) noexcept override
    {
        return moveNothing(ErrNotSupported);
    }

private:
    const Ref<Interfaces::Stripe> _elements; // keeps what is read
    Interfaces::ByteReading& _reading;
};

// The bytes of stored data: as it gives them, or else converted.
Ref<Interfaces::Stream> bytesOf(const Ref<Interfaces::Stripe>& elements)
{
    if (Interfaces::ByteReading* const reading = byteReadingOf(*elements))
        return make<GivenBytes>(elements, *reading);
    return ByteConverter::create(elements, ToByte(), ToCodePoint());
}

// Bytes in memory as the data of a stream.
Ref<Interfaces::Stripe> elementsOf(const Ref<MemoryStream>& bytes)
{
    bytes->fit();
    bytes->seek(0);
    return make<ByteElements>(bytes);
}

enum class Decoding { None, Flate, Unsupported };

// What the stream's `Filter` asks of a decoding; `Unsupported` with a line and `ErrBadFilter`.
Decoding decodingOf(const Dictionary& dictionary)
{
    const FilterEntry filter = readFilterEntry(dictionary);
    switch (filter.kind) {
    case FilterEntry::Kind::None:
        return Decoding::None;
    case FilterEntry::Kind::Flate:
        return Decoding::Flate;
    case FilterEntry::Kind::OtherName:
        if (!filter.name) {
            report.oddity("Got filter entry, but no name");
            return Decoding::None;
        }
        report.fail(ErrBadFilter, "Unsupported filter type ", filter.name);
        break;
    case FilterEntry::Kind::NoName:
        report.fail(ErrBadFilter, "Unexpected type for filter property; got = ", filter.value->type(),
            ", expected = ", Name::kind);
        break;
    }
    return Decoding::Unsupported;
}

// The compressor that the stream's `Filter` asks for, none without an entry; false with a line and
// `ErrStreamConvert` when the filter is another one.
bool createCompressor(const Dictionary& dictionary, const Ref<::String>& stream, Ref<BlockFilter>& compressor)
{
    const FilterEntry filter = readFilterEntry(dictionary);
    switch (filter.kind) {
    case FilterEntry::Kind::None:
        return true;
    case FilterEntry::Kind::Flate:
        compressor = ZlibFilter::createCompressorStream(0);
        return compressor
            || report.fail(ErrStreamConvert, "Failed to create compressor block filter for stream ", stream);
    case FilterEntry::Kind::OtherName:
        return report.fail(ErrStreamConvert, "Compression method not supported ", filter.name);
    case FilterEntry::Kind::NoName:
        break;
    }
    return report.fail(ErrStreamConvert, "Compression method not supported Unknown");
}

constexpr CopyWording cacheWording{
    .noStart = "Failed to navigate in to be cached stream's data",
    .noData = "Failed to read from to be cached stream's data",
    .noCopy = "Failed to create cached stream",
};

} // namespace

Ref<Interfaces::Stripe> DocumentObj::streamData(Ref<Stream> stream, bool decoded) noexcept
{
    if (!stream)
        return refuse(ErrNullArgument);
    // Deliberate: held data comes first and is never decoded.
    const Ref<StreamObj> holder = stream.cast<StreamObj>();
    if (Ref<Interfaces::Stripe> held = holder ? holder->strmData() : nullptr)
        return held;
    const std::uint64_t offset = stream->strmOfs();
    const std::uint64_t fileSize = _stripe->size();
    if (offset >= fileSize)
        return refuse(ErrOutOfRange);
    const Ref<Dictionary> dictionary = stream->dict();
    if (!dictionary)
        return refuse(ErrInvalidArgument);
    const Decoding decoding = decoded ? decodingOf(*dictionary) : Decoding::None;
    if (decoding == Decoding::Unsupported)
        return nullptr;
    const Ref<Number> length = storedLength(*dictionary);
    if (!length)
        return nullptr;
    const std::uint64_t count = static_cast<std::uint64_t>(length->intPart());
    if (count > fileSize - offset)
        return report.fail(ErrBadStreamLength, "Stream end ", offset + count,
            " is out of range of underlying file: ", fileSize);
    const Ref<SubStripe> stored = make<SubStripe>(_stripe, _monitor, offset, count);
    // A view of this file must not become the data of another document's stream.
    if (holder && isFromHere(*holder)) {
        holder->strmData(stored);
        holder->resetChanged(); // reading is no change
    }
    return decoding == Decoding::Flate ? decode(stored, count) : Ref<Interfaces::Stripe>(stored);
}

bool DocumentObj::isFromHere(const StreamObj& stream) const noexcept
{
    return stream._opening == 0 || stream._opening == _opening;
}

bool DocumentObj::isOfOtherFile(const Stream& stream) const noexcept
{
    const auto* const own = dynamic_cast<const StreamObj*>(&stream);
    return own && !own->strmData() && !isFromHere(*own);
}

// The `Length` that a stored stream has; null with a line and `ErrBadStreamLength`.
Ref<Number> DocumentObj::storedLength(const Dictionary& dictionary) noexcept
{
    const Ref<Value> entry = dictionary.find(Keys::length);
    if (!entry)
        return report.fail(ErrBadStreamLength, "Stream has no Length entry");
    const Ref<Value> value = follow(*this, entry,
        {.noObject = {ErrBadStreamLength, "Failed to resolve Length object reference"},
            .noValue = {ErrBadStreamLength, "Resolved Length object reference has no value"}});
    if (!value)
        return nullptr;
    if (value->type() != Value::Type::Number)
        return report.fail(ErrBadStreamLength, "Stream Length has unexpected type: ", value->type());
    Ref<Number> length = value.cast<Number>();
    if (!length)
        return report.fail(ErrBadStreamLength, "Stream Length attribute is not a Number");
    if (length->intPart() < 0 || length->fracPart() != 0)
        return report.fail(ErrBadStreamLength, "Stream Length attribute value is invalid: ", length->intPart());
    return length;
}

// The decoded form of stored data, whose position stays. The codes are those of
// `streamData`.
Ref<Interfaces::Stripe> DocumentObj::decode(const Ref<SubStripe>& stored, std::uint64_t length) noexcept
{
    const Ref<BlockFilter> filter = ZlibFilter::createDecompressorStream();
    if (!filter)
        return report.fail(ErrConverterCreate, "Failed to create decompressor block filter for stream");
    const Ref<Interfaces::Stream> source = bytesOf(stored);
    if (!source)
        return report.fail(ErrConverterCreate, "Failed to create decoding converter for stream");
    const Ref<MemoryStream> target = MemoryStream::create(0, 1);
    if (!target)
        return report.fail(ErrConverterCreate, "Failed to create encoding converter for stream");
    const std::uint64_t position = stored->tell();
    const PumpResult result = pump(*source, length, filter.get(), *target);
    if (result.end != PumpEnd::Done)
        return report.fail(ErrStreamConvert, pumpFailure(result.end));
    stored->seek(position);
    return elementsOf(target);
}

// The number that is the `Length` of a stream whose data is to change; null with a line and
// `ErrStreamLength`. `stream` is how the lines name the stream.
Ref<NumberObj> DocumentObj::lengthToPatch(const Dictionary& dictionary, const LogPiece& stream) noexcept
{
    const Ref<Value> entry = dictionary.find(Keys::length);
    if (!entry)
        return report.fail(ErrStreamLength, "No length entry in dictionary of stream ", stream);
    const Ref<Value> value = resolve(*this, entry);
    const Ref<ObjectRef> reference = valueAs<ObjectRef>(entry);
    if (!value)
        return report.fail(ErrStreamLength, "Failed to resolve length reference to object ", reference->id(),
            " for stream ", stream);
    const Ref<Number> number = valueAs<Number>(value);
    if (!number && reference)
        return report.fail(ErrStreamLength, "Length object ", reference->id(), " is not a valid number for stream ",
            stream);
    if (!number)
        return report.fail(ErrStreamLength, "Length entry is not valid in dictionary of stream ", stream);
    Ref<NumberObj> patchable = number.cast<NumberObj>();
    if (!patchable)
        return report.fail(ErrStreamLength, "Failed to cast Length number to LengthObj for stream ", stream);
    return patchable;
}

bool DocumentObj::setStreamData(Ref<Stream> stream, Ref<Interfaces::Stripe> data, bool compress) noexcept
{
    if (!stream || !data)
        return refuse(ErrNullArgument);
    const Ref<StreamObj> holder = stream.cast<StreamObj>();
    if (!holder)
        return report.fail(ErrInvalidArgument, "Failed to cast Stream to StreamObj");
    const Ref<::String> name = stream->asText();
    const Ref<Dictionary> dictionary = stream->dict();
    if (!dictionary)
        return report.fail(ErrStreamNoDict, "Failed to retrieve dictionary of stream ", name);
    const Ref<NumberObj> length = lengthToPatch(*dictionary, name);
    if (!length)
        return false;
    Ref<BlockFilter> compressor;
    if (compress && !createCompressor(*dictionary, name, compressor))
        return false;
    const Ref<MemoryStream> target = MemoryStream::create(0, 1);
    if (!target)
        return report.fail(ErrStreamLength, "Failed to create encoding converter for stream ", name);
    if (data->elementSize() != sizeof(std::uint8_t))
        return refuse(ErrInvalidArgument); // wider elements would not fit where they are read to
    const std::uint64_t position = data->tell();
    const PumpResult result = pump(*data, data->size() - position, compressor.get(), *target);
    if (result.end == PumpEnd::Read)
        return report.fail(ErrStreamConvert, "Failed to read updated stream data of stream ", name, "; read ",
            result.got, " of ", result.asked, "; error: ", result.code);
    if (result.end != PumpEnd::Done)
        return report.fail(ErrStreamConvert, pumpFailure(result.end), " ", name);
    // Nothing fails from here on: a run that failed has changed neither data nor length.
    data->seek(position);
    holder->strmData(elementsOf(target));
    length->setIntPart(static_cast<std::int64_t>(target->size()));
    return true;
}

bool DocumentObj::cacheStreams() noexcept
{
    for (const Ref<PDF::Object>& object : _objects) {
        const Ref<Value> value = object->value();
        if (!value || value->type() != Value::Type::Stream)
            continue;
        const Ref<StreamObj> stream = value.cast<StreamObj>();
        if (!stream)
            return report.fail(ErrNoResource, "Failed to cast to stream object: ", object->asText());
        // A stream whose data can't be had is passed over; its code stays in the slot.
        const Ref<Interfaces::Stripe> data = streamData(stream, false);
        if (!data || !data.cast<SubStripe>())
            continue;
        const StreamCopy copy = copyToMemory(*data, cacheWording);
        if (!copy.block)
            return false;
        Ref<Interfaces::Stripe> elements = copy.elements();
        if (!elements)
            return report.fail(ErrNoResource, "Failed to create adapter stream");
        stream->strmData(std::move(elements));
        stream->resetChanged(); // the copy only mirrors the file
    }
    return true;
}

bool DocumentObj::recompress(Compression target) noexcept
{
    if (target != Compression::None && target != Compression::Flate)
        return refuse(ErrInvalidArgument);
    std::vector<Recompression> done;
    for (const Ref<PDF::Object>& object : _objects)
        if (object->valueType() == Value::Type::Stream && !recompressObject(*object, target, done)) {
            rollBack(done);
            return false;
        }
    _changed = _changed || !done.empty();
    return true;
}

bool DocumentObj::recompressObject(
    const PDF::Object& object, Compression target, std::vector<Recompression>& done) noexcept
{
    const std::uint32_t id = object.id();
    const Ref<Stream> stream = object.value().cast<Stream>();
    if (!stream)
        return report.fail(ErrNoValue, "Failed to cast value of object ", id, " to stream");
    const Ref<StreamObj> holder = stream.cast<StreamObj>();
    if (!holder)
        return report.fail(ErrStreamLength, "Failed to cast Stream to StreamObj for ", id);
    // Deliberate: a filter of another name counts as none. On the way to Flate its data is compressed as
    // it is and the name is lost; on the way to None it is left alone.
    const Compression compression = stream->compression();
    if (compression == target)
        return true;
    if (compression == Compression::Unknown) {
        report.oddity("Unsupported compression for stream of object ", id);
        return true;
    }
    const Ref<Dictionary> dictionary = stream->dict();
    if (!dictionary)
        return report.fail(ErrStreamNoDict, "Failed to retrieve dictionary of stream ", id);
    const Ref<Interfaces::Stripe> stored = streamData(stream, false);
    if (!stored)
        return report.fail(ErrStreamLength, "Failed to retrieve data for stream ", id);
    const Ref<NumberObj> length = lengthToPatch(*dictionary, id);
    if (!length)
        return false;
    const Ref<Value> filter = dictionary->find(FilterEntry::key);
    Ref<Interfaces::Stripe> converted = recompressData(stored, length->intPart(), *dictionary, target, id);
    if (!converted)
        return false;
    done.push_back({holder, stored, length, length->intPart(), filter});
    length->setIntPart(static_cast<std::int64_t>(converted->size()));
    holder->strmData(std::move(converted));
    return true;
}

// The stored data in the target's form. Deliberate: `Filter` changes first, and a failure after that
// leaves it so, with the old data and length: the document is then damaged in this one stream.
Ref<Interfaces::Stripe> DocumentObj::recompressData(const Ref<Interfaces::Stripe>& stored, std::int64_t length,
    Dictionary& dictionary, Compression target, std::uint32_t id) noexcept
{
    const bool isCompressing = target == Compression::Flate;
    const Ref<Interfaces::Stream> source = bytesOf(stored);
    if (!source)
        return report.fail(ErrStreamLength, "Failed to create decoding converter for stream ", id);
    const Ref<BlockFilter> filter
        = isCompressing ? ZlibFilter::createCompressorStream(0) : ZlibFilter::createDecompressorStream();
    if (!filter)
        return report.fail(ErrStreamConvert,
            isCompressing ? "Failed to create compressor block filter for stream "
                          : "Failed to create decompressor block filter for stream ",
            id);
    if (!dictionary.set(
            FilterEntry::key, isCompressing ? Name::create(::String::create(FilterEntry::flateName)) : nullptr))
        return report.fail(ErrFilterUpdate, "Failed to update Filter in dictionary of stream ", id);
    const Ref<MemoryStream> converted = MemoryStream::create(0, 1);
    if (!converted)
        return report.fail(ErrStreamLength, "Failed to create encoding converter for stream ", id);
    const std::uint64_t position = stored->tell();
    const PumpResult result = pump(*source, static_cast<std::uint64_t>(length), filter.get(), *converted);
    if (result.end != PumpEnd::Done)
        return report.fail(ErrStreamConvert, pumpFailure(result.end), " ", id);
    stored->seek(position);
    return elementsOf(converted);
}

// Puts back what was converted. Deliberate: the streams and their dictionaries then report no change, even
// if they had reported one before. The slot keeps the code of the failure.
void DocumentObj::rollBack(const std::vector<Recompression>& done) noexcept
{
    const std::uint32_t code = Error::get();
    for (const Recompression& record : done) {
        record.stream->strmData(record.oldData);
        record.length->setIntPart(record.oldLength);
        const Ref<Dictionary> dictionary = record.stream->dict();
        dictionary->set(FilterEntry::key, record.oldFilter);
        record.stream->resetChanged();
        if (const Ref<DictionaryObj> resettable = dictionary.cast<DictionaryObj>())
            resettable->resetChanged();
    }
    Error::set(code);
}

} // namespace Libraries::Files::PDF
