#include <document/DocumentObj.h>

#include <document/Keys.h>
#include <document/Resolve.h>
#include <document/Syntax.h>
#include <platform/ElementReader.h>
#include <stripes/SubStripe.h>
#include <values/Dictionary.h>
#include <values/Number.h>
#include <values/StreamObj.h>

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
        const Ref<StreamObj> holder = stream.cast<StreamObj>();
        const Ref<Interfaces::Stripe> held = holder ? holder->strmData() : nullptr;
        const bool isOfFile = holder && isFromHere(*holder) && stream->strmOfs() < elements.size()
            && (!held || held.cast<SubStripe>());
        const Ref<Dictionary> dictionary = isOfFile ? stream->dict() : nullptr;
        const Ref<Number> length = dictionary ? resolveEntryAs<Number>(*this, *dictionary, Keys::length) : nullptr;
        if (!length || length->intPart() < 0)
            continue;
        const std::uint64_t end = stream->strmOfs() + static_cast<std::uint64_t>(length->intPart());
        if (!isDataEnd(elements, end))
            notes.add(ReadingNote::StreamEnd, object->id(), end);
    }
    _monitor->leave();
}

} // namespace Libraries::Files::PDF
