#include <host/streams/FilterChain.h>

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/base/Following.h>
#include <host/base/Utf8.h>
#include <host/streams/Decoders.h>
#include <host/streams/StoredBytes.h>
#include <platform/ConstantText.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/Boolean.h>
#include <values/Name.h>
#include <values/Number.h>

#include <algorithm>
#include <limits>

namespace Host {

using namespace Libraries::Files::PDF;
using Decoders::Bytes;
using Decoders::End;

namespace {

constinit const ConstantText filterKey{"Filter"};
constinit const ConstantText parameterKeys[] = {ConstantText("DecodeParms"), ConstantText("DP")};

using Decode = End (*)(const FilterStep& step, Decoders::Input in, std::size_t limit, Bytes& out);

// A filter by its name and the short one.
struct KnownFilter {
    const char* name;
    const char* shortName;
    Decode decode;
};
constexpr KnownFilter knownFilters[] = {
    {"FlateDecode", "Fl", [](const FilterStep&, auto in, auto limit, Bytes& out) {
        return Decoders::flate(in, limit, out);
    }},
    {"LZWDecode", "LZW", [](const FilterStep& step, auto in, auto limit, Bytes& out) {
        return Decoders::lzw(in, step.isEarly, limit, out);
    }},
    {"ASCII85Decode", "A85", [](const FilterStep&, auto in, auto limit, Bytes& out) {
        return Decoders::ascii85(in, limit, out);
    }},
    {"ASCIIHexDecode", "AHx", [](const FilterStep&, auto in, auto limit, Bytes& out) {
        return Decoders::asciiHex(in, limit, out);
    }},
    {"RunLengthDecode", "RL", [](const FilterStep&, auto in, auto limit, Bytes& out) {
        return Decoders::runLength(in, limit, out);
    }},
    {"DCTDecode", "DCT", nullptr},
    {"CCITTFaxDecode", "CCF", nullptr},
};

Decode decoderNamed(const std::string& name)
{
    for (const KnownFilter& each : knownFilters)
        if (name == each.name)
            return each.decode;
    return nullptr;
}

std::string fullName(const std::string& name)
{
    for (const KnownFilter& each : knownFilters)
        if (name == each.shortName)
            return each.name;
    return name;
}

Refusal badFilter(const std::string& why)
{
    return {Reason::Unsupported, why, ErrBadFilter};
}

// The values of an entry that is one or an array of them, references followed; null for those that are nothing.
std::vector<Ref<Value>> listOf(const Document& document, const Ref<Value>& value)
{
    const Ref<Array> array = valueAs<Array>(value);
    std::vector<Ref<Value>> list;
    if (value && !array)
        list.push_back(value);
    for (std::uint64_t i = 0; array && i < std::min<std::uint64_t>(array->size(), Limits::maxFilters + 1); ++i)
        list.push_back(followAll(document, array->get(i)));
    return list;
}

Ref<Value> parametersOf(const Document& document, const Dictionary& dictionary)
{
    Ref<Value> value = followEntry(document, dictionary, parameterKeys[0]);
    return value ? value : followEntry(document, dictionary, parameterKeys[1]);
}

// Reads a whole number into `number` where there is one; false when it can't be that of a parameter.
bool readNumber(const Document& document, const Dictionary& parameters, const char* key, int& number)
{
    const auto held = followEntryAs<Number>(document, parameters, ::String::create(key));
    if (!held)
        return true;
    const bool isFitting = held->intPart() >= 0 && held->intPart() <= std::numeric_limits<int>::max();
    number = isFitting ? int(held->intPart()) : 0;
    return isFitting;
}

bool readParameters(const Document& document, const Dictionary& parameters, FilterStep& step)
{
    Decoders::Predictor& predictor = step.predictor;
    int early = 1;
    const bool isRead = readNumber(document, parameters, "Predictor", predictor.kind)
        && readNumber(document, parameters, "Colors", predictor.colors)
        && readNumber(document, parameters, "BitsPerComponent", predictor.bitsPerComponent)
        && readNumber(document, parameters, "Columns", predictor.columns)
        && readNumber(document, parameters, "EarlyChange", early);
    step.isEarly = early != 0;
    return isRead && (predictor.isNone() || predictor.isUsable());
}

// Counts what came out of a step.
End counted(End end, const Bytes& out, Budget& budget)
{
    const bool isWithin = budget.spend(Cost::DecodedData, out.size() + (end == End::TooLong ? 1 : 0));
    return isWithin ? end : End::TooLong;
}

// Undoes one filter, the predictor included.
End undo(const FilterStep& step, Budget& budget, Bytes& bytes)
{
    Bytes out;
    End end = counted(decoderNamed(step.name)(step, bytes, budget.left(Cost::DecodedData), out), out, budget);
    if (!step.predictor.isNone() && end != End::TooLong) {
        Bytes unpredicted;
        const End later = counted(
            Decoders::unpredict(step.predictor, out, budget.left(Cost::DecodedData), unpredicted), unpredicted, budget);
        end = later == End::Whole ? end : later;
        out = std::move(unpredicted);
    }
    bytes = std::move(out);
    return end;
}

} // namespace

bool FilterStep::isSupported() const noexcept
{
    return name == "Crypt" || decoderNamed(name);
}

Result<std::vector<FilterStep>> filtersOf(const Ref<Document>& document, const Dictionary& dictionary) noexcept
{
    const auto filters = listOf(*document, followEntry(*document, dictionary, filterKey));
    const auto parameters = listOf(*document, parametersOf(*document, dictionary));
    if (filters.size() > Limits::maxFilters)
        return badFilter("its data has too many filters");
    std::vector<FilterStep> steps;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        const Ref<Name> name = valueAs<Name>(filters[i]);
        if (!name || !name->value())
            return badFilter("its Filter is neither a name nor an array of names");
        FilterStep step{fullName(toUtf8(name->value())), {}, true};
        const auto own = i < parameters.size() ? valueAs<Dictionary>(parameters[i]) : nullptr;
        const bool hasPredictor = step.name == "FlateDecode" || step.name == "LZWDecode";
        if (own && hasPredictor && !readParameters(*document, *own, step))
            return badFilter("the parameters of its filter " + step.name + " can't be used");
        steps.push_back(std::move(step));
    }
    return steps;
}

Result<DecodedStream> decodeStream(
    const Ref<Document>& document, const Ref<Stream>& stream, std::size_t limit) noexcept
{
    const Ref<Interfaces::Stripe> stored = document && stream ? document->streamData(stream, false) : nullptr;
    Budget budget(std::max(fileSizeOf(document), stored ? stored->size() : 0));
    if (limit != 0)
        budget.setLimit(Cost::DecodedData, limit, "limit");
    return decodeStream(document, stream, budget);
}

Result<DecodedStream> decodeStream(
    const Ref<Document>& document, const Ref<Stream>& stream, Budget& budget) noexcept
{
    if (!document || !stream)
        return codeRefusal(ErrNullArgument);
    const Ref<Dictionary> dictionary = stream->dict();
    if (!dictionary)
        return codeRefusal(ErrStreamNoDict);
    const auto steps = filtersOf(document, *dictionary);
    if (!steps)
        return steps.refusal();
    for (const FilterStep& step : *steps)
        if (!step.isSupported())
            return badFilter("the filter " + step.name + " of its data is not supported");
    const Ref<Interfaces::Stripe> data = document->streamData(stream, false);
    if (data && !budget.spend(Cost::StoredData, data->size()))
        return budget.refusal();
    auto stored = storedBytes(document, stream);
    if (!stored)
        return stored.refusal();
    DecodedStream result{std::move(*stored)};
    for (const FilterStep& step : *steps) {
        const End end = step.name == "Crypt" ? End::Whole : undo(step, budget, result.bytes);
        if (end == End::TooLong)
            return budget.refusal();
        result.isDamaged = result.isDamaged || end == End::Damaged;
    }
    return result;
}

} // namespace Host
