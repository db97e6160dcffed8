#include <host/streams/StreamBytes.h>

#include <host/base/Characters.h>
#include <host/base/ErrorWords.h>
#include <host/streams/FilterChain.h>
#include <platform/ZlibFilter.h>
#include <values/FilterEntry.h>

#include <algorithm>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

constexpr std::size_t blockSize = 65536;

// Moves the bytes of a stripe to a sink, through a filter if there is one.
class Pump {
public:
    Pump(Interfaces::Stripe& source, Ref<BlockFilter> filter, const ByteSink& sink) noexcept
        : _source(source), _filter(std::move(filter)), _sink(sink)
    {
    }

    Result<std::uint64_t> run() noexcept
    {
        bool isGood = _source.seek(0) == 0;
        for (std::uint64_t left = _source.size(); isGood && left > 0 && !_isAtEnd;) {
            const std::size_t count = std::min<std::uint64_t>(left, blockSize);
            isGood = readBlock(count) && (_filter ? process(count) : give(_in.data(), count));
            left -= count;
        }
        if (isGood && (!_filter || flush()))
            return _total;
        if (_isSinkFull)
            return Refusal{Reason::Cancelled, "the copying of its data was stopped"};
        return codeRefusal(ErrStreamConvert);
    }

private:
    bool readBlock(std::size_t count) noexcept
    {
        BufferDesc area = BufferDesc::plain(_elements.data());
        if (_source.read(area, count, waitForever) != count)
            return false;
        for (std::size_t i = 0; i < count; ++i) {
            const int byte = byteOfElement(_elements[i]);
            if (byte < 0)
                return false;
            _in[i] = static_cast<std::uint8_t>(byte);
        }
        return true;
    }

    bool process(std::size_t count) noexcept
    {
        const std::uint8_t* in = _in.data();
        while (count > 0) {
            std::size_t consumed = 0;
            std::size_t produced = 0;
            if (!_filter->process(in, count, _out.data(), _out.size(), &consumed, &produced)
                || !give(_out.data(), produced))
                return false;
            _isAtEnd = consumed == 0 && produced == 0; // the rest is not compressed data
            if (_isAtEnd)
                break;
            in += consumed;
            count -= consumed;
        }
        return true;
    }

    bool flush() noexcept
    {
        int state = 1;
        while (state == 1) {
            std::size_t produced = 0;
            state = _filter->flush(_out.data(), _out.size(), &produced);
            if (!give(_out.data(), produced))
                return false;
        }
        return state == 0;
    }

    bool give(const std::uint8_t* bytes, std::size_t count) noexcept
    {
        _total += count;
        _isSinkFull = count > 0 && !_sink(bytes, count);
        return !_isSinkFull;
    }

    Interfaces::Stripe& _source;
    const Ref<BlockFilter> _filter;
    const ByteSink& _sink;
    std::vector<std::uint32_t> _elements = std::vector<std::uint32_t>(blockSize);
    std::vector<std::uint8_t> _in = std::vector<std::uint8_t>(blockSize);
    std::vector<std::uint8_t> _out = std::vector<std::uint8_t>(blockSize);
    std::uint64_t _total = 0;
    bool _isAtEnd = false;
    bool _isSinkFull = false;
};

// Whether the data can be decoded piece by piece: it has no filter, or FlateDecode without a predictor.
bool isSimple(const std::vector<FilterStep>& filters)
{
    return filters.empty()
        || (filters.size() == 1 && filters[0].name == FilterEntry::flateName && filters[0].predictor.isNone());
}

Result<std::uint64_t> copyDecoded(
    const Ref<Document>& document, const Ref<Stream>& stream, const ByteSink& sink, Budget* budget)
{
    const auto decoded = budget ? decodeStream(document, stream, *budget) : decodeStream(document, stream);
    if (!decoded)
        return decoded.refusal();
    if (!decoded->bytes.empty() && !sink(decoded->bytes.data(), decoded->bytes.size()))
        return Refusal{Reason::Cancelled, "the copying of its data was stopped"};
    if (decoded->isDamaged)
        return codeRefusal(ErrStreamConvert);
    return decoded->bytes.size();
}

// Without a budget the sink alone decides how much there may be.
Result<std::uint64_t> copy(
    const Ref<Document>& document, const Ref<Stream>& stream, StreamForm form, const ByteSink& sink, Budget* budget)
{
    if (!document || !stream)
        return codeRefusal(ErrNullArgument);
    const Ref<Dictionary> dictionary = stream->dict();
    if (form == StreamForm::Decoded && !dictionary)
        return codeRefusal(ErrStreamNoDict);
    Result<std::vector<FilterStep>> filters =
        form == StreamForm::Decoded ? filtersOf(document, *dictionary) : std::vector<FilterStep>();
    if (!filters)
        return filters.refusal();
    if (!isSimple(*filters))
        return copyDecoded(document, stream, sink, budget);
    Ref<BlockFilter> decoder = filters->empty() ? nullptr : ZlibFilter::createDecompressorStream();
    if (!decoder && !filters->empty())
        return codeRefusal(ErrConverterCreate);
    const Ref<Interfaces::Stripe> stored = document->streamData(stream, false);
    if (!stored)
        return codeRefusal(Error::get());
    if (stored->elementSize() != sizeof(std::uint32_t))
        return codeRefusal(ErrStreamConvert);
    if (budget && !budget->spend(Cost::StoredData, stored->size()))
        return budget->refusal();
    const ByteSink counted = [&](const std::uint8_t* bytes, std::size_t count) {
        return (!decoder || budget->spend(Cost::DecodedData, count)) && sink(bytes, count);
    };
    const std::uint64_t position = stored->tell();
    Result<std::uint64_t> copied = Pump(*stored, decoder, budget ? counted : sink).run();
    stored->seek(position);
    if (!copied && budget && budget->isExceeded())
        return budget->refusal();
    return copied;
}

} // namespace

Result<std::uint64_t> copyStream(
    const Ref<Document>& document, const Ref<Stream>& stream, StreamForm form, const ByteSink& sink) noexcept
{
    return copy(document, stream, form, sink, nullptr);
}

Result<std::uint64_t> copyStream(const Ref<Document>& document, const Ref<Stream>& stream, StreamForm form,
    Budget& budget, const ByteSink& sink) noexcept
{
    return copy(document, stream, form, sink, &budget);
}

Result<std::vector<std::uint8_t>> decoded(const Ref<Document>& document, const Ref<Stream>& stream) noexcept
{
    std::vector<std::uint8_t> bytes;
    const Result<std::uint64_t> copied = copyStream(document, stream, StreamForm::Decoded,
        [&bytes](const std::uint8_t* more, std::size_t count) {
            bytes.insert(bytes.end(), more, more + count);
            return true;
        });
    if (!copied)
        return copied.refusal();
    return bytes;
}

} // namespace Host
