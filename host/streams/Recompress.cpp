#include <host/streams/Recompress.h>

#include <document/Inspection.h>
#include <document/Resolve.h>
#include <host/base/Characters.h>
#include <host/base/ErrorWords.h>
#include <host/files/MemoryStripe.h>
#include <host/streams/Compress.h>
#include <host/streams/FilterChain.h>
#include <host/streams/StreamBytes.h>
#include <host/streams/StreamChecks.h>
#include <values/FilterEntry.h>
#include <values/NumberObj.h>

#include <algorithm>
#include <cstdio>
#include <map>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

// A stream as it was before anything was done.
struct Surveyed {
    Ref<Stream> stream;
    Ref<Value> filter; // null when there is none
    RecompressedStream report;
};

// The name as it is written, with escapes for what a terminal might interpret or can't show.
std::string textOf(const Ref<Value>& filter)
{
    const Ref<Name> name = valueAs<Name>(filter);
    std::string text;
    if (!name || !name->value())
        return text;
    name->value()->forEach([&text](std::uint32_t c) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "#%02X", static_cast<unsigned>(byteOfElement(c)) & 0xFF);
        text += c > ' ' && c < 127 ? std::string(1, static_cast<char>(c)) : escaped;
    });
    return text;
}

// The names of filters with blanks between them.
std::string textOf(const std::vector<FilterStep>& filters)
{
    std::string text;
    for (const FilterStep& step : filters)
        text += (text.empty() ? "" : " ") + step.name;
    return text;
}

// As `Document::recompress` decides, which goes by the name alone.
StreamOutcome forcedOutcomeOf(const Stream& stream, bool hasFilter, Compression target)
{
    const Compression compression = stream.compression();
    if (compression == Compression::Unknown)
        return StreamOutcome::NoName;
    if (compression != target)
        return StreamOutcome::Converted;
    return hasFilter && target == Compression::None ? StreamOutcome::OtherFilter : StreamOutcome::Fitting;
}

StreamOutcome outcomeOf(const std::vector<FilterStep>& filters, Compression target)
{
    const bool isFlate = filters.size() == 1 && filters[0].name == FilterEntry::flateName;
    if (target == Compression::Flate ? isFlate : filters.empty())
        return StreamOutcome::Fitting;
    const bool canBeUndone
        = std::all_of(filters.begin(), filters.end(), [](const FilterStep& step) { return step.isSupported(); });
    return canBeUndone ? StreamOutcome::Converted : StreamOutcome::OtherFilter;
}

std::vector<Surveyed> survey(const Ref<Document>& document, Compression target, bool isForced)
{
    std::vector<Surveyed> streams;
    for (const auto& object : objectsOf(document)) {
        Ref<Stream> stream = valueAs<Stream>(object->value());
        const Ref<Dictionary> dictionary = stream ? stream->dict() : nullptr;
        if (!dictionary)
            continue;
        Ref<Value> filter = entryOf(*stream, "Filter");
        const auto filters = filtersOf(document, *dictionary);
        const StreamOutcome outcome = isForced ? forcedOutcomeOf(*stream, filter != nullptr, target)
            : filters                          ? outcomeOf(*filters, target)
                                               : StreamOutcome::NoName;
        std::string text = !isForced && filters && filters->size() > 1 ? textOf(*filters) : textOf(filter);
        const bool hasParameters = hasDecodeParameters(*stream);
        streams.push_back({std::move(stream), std::move(filter),
            {object, outcome, std::move(text), hasParameters, 0, 0}});
    }
    return streams;
}

bool isConverted(const Surveyed& surveyed)
{
    return surveyed.report.outcome == StreamOutcome::Converted;
}

std::optional<Refusal> refuseSharedLengths(const std::vector<Surveyed>& streams)
{
    std::map<std::pair<std::uint32_t, std::uint32_t>, const Surveyed*> firstWith;
    for (const Surveyed& each : streams) {
        const auto length = lengthReferenceOf(*each.stream);
        if (!length)
            continue;
        const auto [first, isFirst] = firstWith.emplace(*length, &each);
        if (!isFirst && (isConverted(each) || isConverted(*first->second)))
            return Refusal{Reason::Conflict,
                nameOf(*first->second->report.object) + " and " + nameOf(*each.report.object)
                    + " share one Length, which can fit only one of them",
                ErrStreamLength};
    }
    return {};
}

// Moves data that is held to its beginning, where the library starts reading, and notes the sizes.
std::optional<Refusal> rewind(const Ref<Document>& document, std::vector<Surveyed>& streams)
{
    for (Surveyed& each : streams) {
        if (!isConverted(each))
            continue;
        const Ref<Interfaces::Stripe> data = document->streamData(each.stream, false);
        if (!data)
            return codeRefusal(Error::get(), nameOf(*each.report.object) + ": ");
        if (data->seek(0) != 0)
            return codeRefusal(ErrStreamConvert, nameOf(*each.report.object) + ": ");
        each.report.sizeBefore = data->size();
    }
    return {};
}

// Gives the stream at which the library failed, and which it leaves with the new filter, its old one back.
Refusal restore(const Ref<Document>& document, std::vector<Surveyed>& streams, std::uint32_t code)
{
    std::string failing;
    for (Surveyed& each : streams) {
        if (!isConverted(each) || entryOf(*each.stream, "Filter") == each.filter)
            continue;
        each.stream->dict()->set(::String::create("Filter"), each.filter);
        failing = nameOf(*each.report.object) + ": ";
    }
    rewind(document, streams); // the failing one is where its reading ended
    return codeRefusal(code, failing);
}

// Whether the library can bring the Length up to date.
bool hasUsableLength(const Ref<Document>& document, const Stream& stream)
{
    const auto number = resolveAs<Number>(*document, entryOf(stream, "Length"));
    return number && number.cast<NumberObj>();
}

// Undoes all filters and parameters of the streams, and applies the new filter, when all can be.
std::optional<Refusal> convert(
    const Ref<Document>& document, std::vector<Surveyed>& streams, Compression target, Budget& budget)
{
    std::vector<std::vector<std::uint8_t>> converted;
    for (Surveyed& each : streams) {
        if (!isConverted(each))
            continue;
        const std::string prefix = nameOf(*each.report.object) + ": ";
        if (!hasUsableLength(document, *each.stream))
            return codeRefusal(ErrStreamLength, prefix);
        auto decoded = decodeStream(document, each.stream, budget);
        if (!decoded)
            return decoded.refusal().withPrefix(prefix);
        if (decoded->isDamaged)
            return codeRefusal(ErrStreamConvert, prefix);
        each.report.sizeBefore = document->streamData(each.stream, false)->size();
        converted.push_back(target == Compression::Flate ? compressedBytes(decoded->bytes) : std::move(decoded->bytes));
    }
    auto next = converted.begin();
    for (Surveyed& each : streams) {
        if (!isConverted(each))
            continue;
        each.report.sizeAfter = next->size();
        document->setStreamData(each.stream, make<ByteMemoryStripe>(std::move(*next++)), false);
        const Ref<Dictionary> dictionary = each.stream->dict();
        for (const char* key : {"Filter", "DecodeParms", "DP"})
            dictionary->set(::String::create(key), nullptr);
        if (target == Compression::Flate)
            dictionary->set(FilterEntry::key, Name::create(::String::create(FilterEntry::flateName)));
    }
    return {};
}

// Whether the library may convert the stream: nothing stops it on the way.
bool isWithin(Budget& budget, const Ref<Document>& document, const Ref<Stream>& stream, Compression target)
{
    const StreamForm form = target == Compression::None ? StreamForm::Decoded : StreamForm::Stored;
    const auto copied
        = copyStream(document, stream, form, budget, [](const std::uint8_t*, std::size_t) { return true; });
    return copied || !budget.isExceeded();
}

// By `Document::recompress`, which goes by names alone.
std::optional<Refusal> convertForced(
    const Ref<Document>& document, std::vector<Surveyed>& streams, Compression target, Budget& budget)
{
    for (const Surveyed& each : streams)
        if (isConverted(each) && !isWithin(budget, document, each.stream, target))
            return budget.refusal().withPrefix(nameOf(*each.report.object) + ": ");
    if (auto refusal = rewind(document, streams))
        return refusal;
    if (!document->recompress(target))
        return restore(document, streams, Error::get());
    for (Surveyed& each : streams)
        if (isConverted(each))
            each.report.sizeAfter = document->streamData(each.stream, false)->size();
    return {};
}

} // namespace

Result<std::vector<RecompressedStream>> recompress(
    const Ref<Document>& document, Compression target, const RecompressOptions& options) noexcept
{
    if (!document)
        return codeRefusal(ErrNullArgument);
    if (target != Compression::None && target != Compression::Flate)
        return codeRefusal(ErrInvalidArgument);
    std::vector<Surveyed> streams = survey(document, target, options.isForced);
    if (auto refusal = refuseSharedLengths(streams))
        return *refusal;
    Budget budget(document, options.limitFactor);
    if (auto refusal = (options.isForced ? convertForced : convert)(document, streams, target, budget))
        return *refusal;
    std::vector<RecompressedStream> reports;
    for (Surveyed& each : streams)
        reports.push_back(std::move(each.report));
    return reports;
}

} // namespace Host
