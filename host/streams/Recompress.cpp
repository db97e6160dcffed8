#include <host/streams/Recompress.h>

#include <document/Inspection.h>
#include <host/base/Characters.h>
#include <host/base/ErrorWords.h>
#include <host/streams/StreamChecks.h>
#include <values/Dictionary.h>
#include <values/Name.h>

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

StreamOutcome outcomeOf(const Stream& stream, bool hasFilter, Compression target)
{
    const Compression compression = stream.compression();
    if (compression == Compression::Unknown)
        return StreamOutcome::NoName;
    if (compression != target)
        return StreamOutcome::Converted;
    return hasFilter && target == Compression::None ? StreamOutcome::OtherFilter : StreamOutcome::Fitting;
}

std::vector<Surveyed> survey(const Ref<Document>& document, Compression target)
{
    std::vector<Surveyed> streams;
    for (const auto& object : objectsOf(document)) {
        Ref<Stream> stream = valueAs<Stream>(object->value());
        if (!stream)
            continue;
        Ref<Value> filter = entryOf(*stream, "Filter");
        const StreamOutcome outcome = outcomeOf(*stream, filter != nullptr, target);
        const bool hasParameters = hasDecodeParameters(*stream);
        std::string text = textOf(filter);
        streams.push_back({std::move(stream), std::move(filter),
            {object, outcome, std::move(text), hasParameters, 0, 0}});
    }
    return streams;
}

bool isConverted(const Surveyed& surveyed)
{
    return surveyed.report.outcome == StreamOutcome::Converted;
}

// Streams that would be compressed although they have a filter, which then can't be FlateDecode.
std::optional<Refusal> refuseLostFilters(const std::vector<Surveyed>& streams)
{
    std::string names;
    for (const Surveyed& each : streams)
        if (isConverted(each) && each.filter)
            names += (names.empty() ? "" : ", ") + nameOf(*each.report.object) + " (" + each.report.filter + ")";
    if (names.empty())
        return {};
    return Refusal{Reason::Lossy,
        "these streams would lose their filter if they were compressed again: " + names, ErrBadFilter};
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

} // namespace

Result<std::vector<RecompressedStream>> recompress(
    const Ref<Document>& document, Compression target, const RecompressOptions& options) noexcept
{
    if (!document)
        return codeRefusal(ErrNullArgument);
    if (target != Compression::None && target != Compression::Flate)
        return codeRefusal(ErrInvalidArgument);
    std::vector<Surveyed> streams = survey(document, target);
    if (target == Compression::Flate && !options.isForced)
        if (auto refusal = refuseLostFilters(streams))
            return *refusal;
    if (auto refusal = refuseSharedLengths(streams))
        return *refusal;
    if (auto refusal = rewind(document, streams))
        return *refusal;
    if (!document->recompress(target))
        return restore(document, streams, Error::get());
    std::vector<RecompressedStream> reports;
    for (Surveyed& each : streams) {
        if (isConverted(each))
            each.report.sizeAfter = document->streamData(each.stream, false)->size();
        reports.push_back(std::move(each.report));
    }
    return reports;
}

} // namespace Host
