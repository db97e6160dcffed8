#include "StreamEdits.h"

#include <host/streams/Recompress.h>

#include <map>

namespace Fuzz {

namespace {

// All that a stream consists of, beside what its dictionary has for others.
struct State {
    explicit State(const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream) noexcept
        : held(stream->strmData()), filter(stream->dict()->find(::String::create("Filter"))),
          compression(stream->compression())
    {
        if (const Ref<PDF::Number> number = numberIn(document, stream->dict(), "Length")) {
            lengthNumber = number;
            length = number->intPart();
        }
    }
    bool hasDataAndLengthOf(const State& other) const noexcept
    {
        return held == other.held && length == other.length;
    }

    Ref<Interfaces::Stripe> held;
    Ref<PDF::Value> filter;
    PDF::Compression compression;
    Ref<PDF::Number> lengthNumber;
    std::int64_t length = 0;
};

// A stream before all are recompressed.
struct Before {
    Ref<PDF::StreamObj> stream;
    State state;
    std::string data;         // as far as it is read
    bool isOwnLength = true; // no other stream has the same one
};

std::vector<Before> statesOf(const Ref<PDF::Document>& document, std::string_view file)
{
    std::vector<Before> all;
    for (const Ref<PDF::StreamObj>& stream : streamsOf(document)) {
        Before before{stream, State(document, stream), {}};
        const auto stored = storedIn(file, document, stream);
        if (before.state.held) {
            before.state.held->seek(0);
            before.data = Tests::bytesOf(before.state.held);
        } else if (stored) {
            before.data = *stored;
        }
        before.data = before.data.substr(0, static_cast<std::uint64_t>(before.state.length));
        all.push_back(std::move(before));
    }
    std::map<const PDF::Number*, unsigned> uses;
    for (const Before& before : all)
        ++uses[before.state.lengthNumber.get()];
    for (Before& before : all)
        before.isOwnLength = uses[before.state.lengthNumber.get()] == 1;
    return all;
}

// The elements that the streams take in their new form.
std::uint64_t elementsToRecompress(const std::vector<Before>& all, PDF::Compression target)
{
    std::uint64_t elements = 0;
    for (const Before& before : all)
        if (target == PDF::Compression::None && before.state.compression == PDF::Compression::Flate)
            elements += inflated(before.data, Allowance::mostElements).bytes.size();
        else
            elements += before.data.size();
    return elements;
}

void checkRecompressed(const Ref<PDF::Document>& document, const Before& before, PDF::Compression target)
{
    const State after(document, before.stream);
    if (before.state.compression == target || before.state.compression == PDF::Compression::Unknown) {
        require(after.held == before.state.held, "a stream that needs no other compression keeps its data");
        return;
    }
    require(after.compression == target, "streams are brought to the compression that was asked for");
    require(before.stream->changed() && document->changed(), "a recompression is a change");
    if (!before.isOwnLength)
        return;
    const std::string data = Tests::bytesOf(after.held);
    require(after.length == static_cast<std::int64_t>(data.size()), "Length is that of the new data");
    const bool isCompressed = target == PDF::Compression::Flate;
    const Inflated plain = inflated(isCompressed ? data : before.data, Allowance::mostElements);
    require(plain.end == Inflated::End::Whole && plain.bytes == (isCompressed ? before.data : data),
        "recompressed data decodes to the same bytes");
}

void checkRolledBack(const Ref<PDF::Document>& document, const std::vector<Before>& all, std::size_t mostOtherFilters)
{
    std::size_t otherFilters = 0;
    for (const Before& before : all) {
        const State after(document, before.stream);
        const bool hasSameData = before.state.held ? after.held == before.state.held : !before.stream->changed();
        require(hasSameData, "a failed recompression leaves data as it was");
        require(!before.isOwnLength || after.length == before.state.length,
            "a failed recompression leaves lengths that aren't shared as they were");
        otherFilters += after.filter != before.state.filter;
    }
    require(otherFilters <= mostOtherFilters, "a failed recompression leaves one filter changed at most");
}

} // namespace

void replaceData(const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream, const std::string& data,
    std::uint64_t start, bool isCompressing, Tests::Fault fault) noexcept
{
    const State before(document, stream);
    const bool wasChanged = document->changed();
    const Ref<Tests::TestStripe> bytes = make<Tests::TestStripe>(std::string(start, '-') + data, fault, 1);
    bytes->position = start;
    const bool isReplaced = ask("setStreamData", {ErrStreamLength, ErrStreamConvert},
        [&] { return document->setStreamData(stream, bytes, isCompressing); });
    const State after(document, stream);
    require(after.filter == before.filter, "replacing data leaves the filter");
    if (!isReplaced) {
        require(after.hasDataAndLengthOf(before) && document->changed() == wasChanged,
            "data that can't be replaced stays as it was");
        return;
    }
    require(!bytes->hasFailed && bytes->tell() == start, "data that was read whole is back at its place");
    require(stream->changed() && document->changed(), "replaced data is a change");
    const std::string held = Tests::bytesOf(after.held);
    require(after.length == static_cast<std::int64_t>(held.size()), "Length is that of the new data");
    const bool isCompressed = isCompressing && before.filter;
    const Inflated plain = isCompressed ? inflated(held, data.size()) : Inflated{Inflated::End::Whole, held};
    require(plain.end == Inflated::End::Whole && plain.bytes == data, "replaced data decodes to what was given");
}

void recompress(const Ref<PDF::Document>& document, std::string_view file, PDF::Compression target, Way way,
    Allowance& allowance) noexcept
{
    const std::vector<Before> all = statesOf(document, file);
    if (!allowance.hasElements(elementsToRecompress(all, target)))
        return;
    const bool isDone = way == Way::Host
        ? bool(Host::recompress(document, target, {true}))
        : ask("recompress", {ErrNoValue, ErrStreamNoDict, ErrStreamLength, ErrStreamConvert},
              [&] { return document->recompress(target); });
    if (!isDone)
        return checkRolledBack(document, all, way == Way::Host ? 0 : 1);
    for (const Before& before : all)
        checkRecompressed(document, before, target);
}

void cacheStreams(const Ref<PDF::Document>& document, std::string_view file, Allowance& allowance) noexcept
{
    const std::vector<Before> all = statesOf(document, file);
    if (!allowance.hasElements(elementsToWrite(document, file)))
        return;
    const bool wasChanged = document->changed();
    require(ask("cacheStreams", {}, [&] { return document->cacheStreams(); }), "streams can be cached");
    require(document->changed() == wasChanged, "caching is no change");
    for (const Before& before : all)
        if (const Ref<Interfaces::Stripe> held = before.stream->strmData(); held && !before.state.held)
            require(Tests::bytesOf(held) == before.data, "cached data is what stands in the file");
}

} // namespace Fuzz
