#include <document/DocumentObj.h>

#include <document/Keys.h>
#include <document/Report.h>
#include <document/StreamPump.h>
#include <platform/MemoryStream.h>
#include <platform/Windows_1252.h>
#include <platform/ZlibFilter.h>
#include <stripes/Convert.h>
#include <stripes/ElementSizeStripe.h>
#include <stripes/SubStripe.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/Number.h>
#include <values/ObjectRef.h>
#include <values/StreamObj.h>

// Stream data. It passes through the filters as bytes, while stripes of the file and of memory hold
// elements: a converter at each end of the pump crosses over.

namespace Libraries::Files::PDF {

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;
using ByteConverter = Utils::Convert<std::uint32_t, std::uint8_t>;

// A stream of bytes over one of elements.
Ref<ByteConverter> convert(Ref<Interfaces::Stream> elements)
{
    const Ref<Windows_1252> encoding = make<Windows_1252>(true);
    return ByteConverter::create(
        std::move(elements), [encoding](std::uint32_t c) { return encoding->byte(c); },
        [encoding](std::uint8_t byte) { return encoding->codePoint(byte); });
}

enum class Decoding { None, Flate, Unsupported };

// What the stream's `Filter` asks of a decoding; `Unsupported` with a line and `ErrBadFilter`.
Decoding decodingOf(const Dictionary& dictionary)
{
    const Ref<Value> filter = dictionary.find(Keys::filter);
    if (!filter)
        return Decoding::None;
    const Ref<Name> name = valueAs<Name>(filter);
    if (!name) {
        report.fail(ErrBadFilter, "Unexpected type for filter property; got = ", filter->type(), ", expected = ",
            Name::kind);
        return Decoding::Unsupported;
    }
    const Ref<::String> text = name->value();
    if (!text) {
        report.oddity("Got filter entry, but no name");
        return Decoding::None;
    }
    if (text->equals("FlateDecode"))
        return Decoding::Flate;
    report.fail(ErrBadFilter, "Unsupported filter type ", text);
    return Decoding::Unsupported;
}

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
    if (offset + count > fileSize)
        return report.fail(ErrBadStreamLength, "Stream end ", offset + count,
            " is out of range of underlying file: ", fileSize);
    const Ref<SubStripe> stored = make<SubStripe>(_stripe, _monitor, offset, count);
    if (holder) {
        holder->strmData(stored);
        holder->resetChanged(); // reading is no change
    }
    return decoding == Decoding::Flate ? decode(stored, count) : Ref<Interfaces::Stripe>(stored);
}

// The `Length` that a stored stream has; null with a line and `ErrBadStreamLength`.
Ref<Number> DocumentObj::storedLength(const Dictionary& dictionary) noexcept
{
    Ref<Value> value = dictionary.find(Keys::length);
    if (!value)
        return report.fail(ErrBadStreamLength, "Stream has no Length entry");
    if (const Ref<ObjectRef> reference = valueAs<ObjectRef>(value)) {
        const Ref<PDF::Object> resolved = object(reference);
        if (!resolved)
            return report.fail(ErrBadStreamLength, "Failed to resolve Length object reference");
        value = resolved->value();
        if (!value)
            return report.fail(ErrBadStreamLength, "Resolved Length object reference has no value");
    }
    if (value->type() != Value::Type::Number)
        return report.fail(ErrBadStreamLength, "Stream Length has unexpected type: ", value->type());
    Ref<Number> length = value.cast<Number>();
    if (!length)
        return report.fail(ErrBadStreamLength, "Stream Length attribute is not a Number");
    if (length->intPart() < 0 || length->fracPart() != 0)
        return report.fail(ErrBadStreamLength, "Stream Length attribute value is invalid: ", length->intPart());
    return length;
}

// The decoded form of stored data, which is left at the place where it stands. The codes are those of
// `streamData`.
Ref<Interfaces::Stripe> DocumentObj::decode(const Ref<SubStripe>& stored, std::uint64_t length) noexcept
{
    const Ref<BlockFilter> filter = ZlibFilter::createDecompressorStream();
    if (!filter)
        return report.fail(ErrConverterCreate, "Failed to create decompressor block filter for stream");
    const Ref<ByteConverter> source = convert(stored);
    if (!source)
        return report.fail(ErrConverterCreate, "Failed to create decoding converter for stream");
    Ref<Interfaces::Stripe> elements = Adapters::ElementSize::Stripe::create(MemoryStream::create(0, 1));
    const Ref<ByteConverter> target = elements ? convert(elements) : nullptr;
    if (!target)
        return report.fail(ErrConverterCreate, "Failed to create encoding converter for stream");
    const std::uint64_t position = stored->tell();
    const PumpEnd end = pump(*source, length, *filter, *target);
    if (end != PumpEnd::Done)
        return report.fail(ErrStreamConvert, pumpFailure(end));
    stored->seek(position);
    elements->seek(0);
    return elements;
}

} // namespace Libraries::Files::PDF
