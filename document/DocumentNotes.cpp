#include <document/DocumentObj.h>

#include <document/Inspection.h>
#include <document/Keys.h>
#include <document/Resolve.h>
#include <document/Syntax.h>
#include <platform/ElementReader.h>
#include <stripes/SubStripe.h>
#include <values/Dictionary.h>
#include <values/Number.h>
#include <values/StreamObj.h>

#include <algorithm>
#include <optional>
#include <string_view>

namespace Libraries::Files::PDF {

namespace {

constexpr std::uint64_t maxBlanks = 64; // between data and its keyword, where there is usually one line ending

bool hasKeyword(ElementReader& elements, std::string_view keyword)
{
    for (const char expected : keyword) {
        std::uint32_t c = 0;
        if (!elements.next(c) || c != static_cast<unsigned char>(expected))
            return false;
    }
    return true;
}

// Whether the data of a stream ends here for the format, too.
bool isDataEnd(ElementReader& elements, std::uint64_t position)
{
    std::uint32_t c = 0;
    bool isRead = elements.seek(position);
    for (std::uint64_t i = 0; i < maxBlanks; ++i) {
        isRead = isRead && elements.next(c);
        if (!isRead || !Syntax::isStandardSpace(c))
            break;
        ++position;
    }
    return isRead && elements.seek(position)
        && (hasKeyword(elements, Syntax::streamEnd)
            || (elements.seek(position) && hasKeyword(elements, Syntax::objectEnd)));
}

// The data that a stream holds besides what it reads of the file; null when it is read from there.
Ref<Interfaces::Stripe> ownDataOf(const Ref<Stream>& stream)
{
    const Ref<StreamObj> holder = stream.cast<StreamObj>();
    Ref<Interfaces::Stripe> held = holder ? holder->strmData() : nullptr;
    return held && held.cast<SubStripe>() ? nullptr : held;
}

// The number under Length where the data is read from the file; none for anything else.
std::optional<std::uint64_t> lengthInFile(const Document& document, const Ref<Stream>& stream, std::uint64_t fileSize)
{
    if (!stream.cast<StreamObj>() || stream->strmOfs() >= fileSize || ownDataOf(stream))
        return {};
    const Ref<Dictionary> dictionary = stream->dict();
    const Ref<Number> length = dictionary ? resolveEntryAs<Number>(document, *dictionary, Keys::length) : nullptr;
    return length && length->intPart() >= 0 ? std::optional(std::uint64_t(length->intPart())) : std::nullopt;
}

} // namespace

ReadingNotes DocumentObj::readingNotes() const noexcept
{
    ReadingNotes notes = _notes;
    noteDataEnds(notes);
    return notes;
}

ReadingNotes DocumentObj::unwrittenNotes() const noexcept
{
    ReadingNotes notes = _unkeptNotes;
    _sources.addUnwritten(notes, _trailer.get());
    noteDataEnds(notes);
    return notes;
}

void DocumentObj::noteDataEnds(ReadingNotes& notes) const noexcept
{
    ElementReader elements(*_stripe);
    if (!elements.isShown())
        return;
    _monitor->enter();
    for (const Ref<PDF::Object>& object : _objects) {
        const Ref<Stream> stream = valueAs<Stream>(object->value());
        const auto length = stream ? lengthInFile(*this, stream, elements.size()) : std::nullopt;
        if (!length)
            continue;
        const std::uint64_t end = stream->strmOfs() + *length;
        if (!isDataEnd(elements, end))
            notes.add(ReadingNote::StreamEnd, object->id(), end);
    }
    _monitor->leave();
}

StoredSizes DocumentObj::storedSizes() const noexcept
{
    StoredSizes sizes;
    const std::uint32_t code = Error::get();
    const std::uint64_t fileSize = _stripe->size();
    for (const Ref<PDF::Object>& object : _objects) {
        const Ref<Stream> stream = valueAs<Stream>(object->value());
        if (!stream)
            continue;
        if (const Ref<Interfaces::Stripe> own = ownDataOf(stream))
            sizes.held += own->size();
        else if (const auto length = lengthInFile(*this, stream, fileSize))
            sizes.inFile += std::min(*length, fileSize - stream->strmOfs());
    }
    Error::set(code); // lookups of what isn't there leave codes
    return sizes;
}

} // namespace Libraries::Files::PDF
