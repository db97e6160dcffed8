#include "RoundTrip.h"

#include <tests/support/PdfText.h>

#include <document/ExactWriting.h>
#include <document/LiteralString.h>
#include <host/files/MemoryStripe.h>
#include <host/losses/Examine.h>
#include <platform/Limits.h>
#include <values/Exact.h>
#include <values/NumberText.h>
#include <values/StringObj.h>

#include <sys/mman.h>

#include <charconv>
#include <limits>

namespace Fuzz {

namespace {

bool contains(const Ref<::String>& text, const char* piece)
{
    return text && text->find(::String::create(piece), 0) < text->length();
}

// Whether the value or one in it is a string that holds the piece as text.
bool hasInString(const Ref<PDF::Value>& value, const char* piece)
{
    bool has = false;
    visitValues(value, [&](const Ref<PDF::Value>& part) {
        const Ref<PDF::String> string = PDF::valueAs<PDF::String>(part);
        has = has || (string && contains(string->value(), piece));
    });
    return has;
}

// Whether a number in it has a fraction that is too large to be read, unless it remembers its word.
bool hasLongFraction(const Ref<PDF::Value>& value, bool isExact)
{
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    bool has = false;
    visitValues(value, [&has, isExact](const Ref<PDF::Value>& part) {
        const Ref<PDF::Number> number = PDF::valueAs<PDF::Number>(part);
        const PDF::NumberObj* own = number && isExact ? PDF::spelledNumber(*number) : nullptr;
        has = has || (number && number->fracPart() > most && !(own && PDF::wordOf(*own)));
    });
    return has;
}

unsigned depthOf(const Ref<PDF::Value>& value)
{
    unsigned deepest = 0;
    if (const Ref<PDF::Array> array = PDF::valueAs<PDF::Array>(value)) {
        for (std::uint64_t i = 0; i < array->size(); ++i)
            deepest = std::max(deepest, depthOf(array->get(i)));
    } else if (const Ref<PDF::Dictionary> dictionary = PDF::valueAs<PDF::Dictionary>(value)) {
        const auto keys = dictionary->keys();
        for (const Ref<::String>& key : *keys)
            deepest = std::max(deepest, depthOf(dictionary->find(key)));
    } else if (const Ref<PDF::Stream> stream = PDF::valueAs<PDF::Stream>(value)) {
        return depthOf(Ref<PDF::Value>(stream->dict()));
    } else {
        return 0;
    }
    return deepest + 1;
}

const char* reasonInValue(const Ref<PDF::Value>& value)
{
    if (hasInString(value, "\\"))
        return "a backslash in a string: the reader drops the second of a pair";
    if (hasLongFraction(value, false))
        return "a fraction that was negative is written as a number that is too large";
    if (depthOf(value) > Limits::maxNesting)
        return "values that were put deeper than a file may have them";
    return nullptr;
}

// Whether the stream says how long its data is. One that shares its Length with another may not.
bool hasOwnLength(const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream)
{
    const Ref<Interfaces::Stripe> data = stream->strmData();
    const Ref<PDF::Number> length = numberIn(document, stream->dict(), "Length");
    return data && length && length->fracPart() == 0
        && static_cast<std::uint64_t>(length->intPart()) == data->size();
}

const char* reasonInStream(const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream)
{
    if (!hasOwnLength(document, stream))
        return "a Length that streams share and that is not this one's";
    const Ref<Interfaces::Stripe> data = stream->strmData();
    std::uint32_t c = 0;
    const std::uint64_t place = data->tell();
    const bool beginsWithLineFeed = data->seek(0) == 0 && data->size() != 0 && readElement(*data, c) && c == '\n';
    data->seek(place);
    if (beginsWithLineFeed && PDF::lineEndingOf(document)->equals("\r"))
        return "data that begins with a LF, behind a CR that ends the line before";
    return nullptr;
}

// The first number of the table of a written file.
std::uint32_t firstOfTable(std::string_view file)
{
    const auto skipLineEnd = [&file](std::size_t place) { return file.find_first_not_of("\r\n", place); };
    std::size_t table = 0;
    std::uint32_t first = 0;
    const std::size_t start = skipLineEnd(file.rfind("startxref") + 9);
    std::from_chars(file.data() + start, file.data() + file.size(), table);
    std::from_chars(file.data() + skipLineEnd(table + 4), file.data() + file.size(), first);
    return first;
}

// The file that the document makes; none when a stream's data can't be had.
std::optional<std::string> write(const Ref<PDF::Document>& document, bool isWhole)
{
    const Ref<Tests::TestStripe> out = make<Tests::TestStripe>("");
    const bool isWritten = ask("write", {ErrWriteObject}, [&] { return document->write(out); });
    require(isWritten == isWhole, "a document is written just when the data of all its streams can be had");
    return isWritten ? std::optional(out->bytes()) : std::nullopt;
}

// Whether the data of all streams can be had.
bool isDataThere(const Ref<PDF::Document>& document, std::string_view file)
{
    bool isThere = true;
    for (const Ref<PDF::StreamObj>& stream : streamsOf(document))
        isThere = isThere && (stream->strmData() || storedIn(file, document, stream));
    return isThere;
}

// The same twice; a save is no change.
std::optional<std::string> writeTwice(const Ref<PDF::Document>& document, std::string_view file)
{
    const bool isWhole = isDataThere(document, file);
    const bool wasChanged = document->changed();
    const std::optional<std::string> written = write(document, isWhole);
    require(document->changed() == wasChanged, "a save is no change");
    if (written)
        require(write(document, true) == written, "a document writes the same file twice");
    return written;
}

void checkReopened(const std::string& written, const char* reason)
{
    const Ref<PDF::Document> again = openFile(written);
    require(again || reason, "a written file opens");
    if (again && !reason)
        require(write(again, true) == written, "a written file comes back as it is");
}

// An exact file, and the trailer that it should have.
struct ExactFile {
    std::string bytes;
    Ref<PDF::Dictionary> trailer;
};

std::optional<ExactFile> writeExactly(const Ref<PDF::Document>& document)
{
    const Ref<Tests::TestStripe> out = make<Tests::TestStripe>("");
    const Ref<PDF::Dictionary> trailer = ask("write exactly", {ErrWriteObject, ErrOutOfRange},
        [&] { return PDF::writeExactly(document, out); });
    require(trailer || Error::get() != ErrOutOfRange || out->bytes().empty(), "gaps are refused before a write");
    return trailer ? std::optional(ExactFile{out->bytes(), trailer}) : std::nullopt;
}

// Whether it is a string whose source has, after the format's end of it, a bracket pair, which the search for the
// trailer's keyword counts.
bool hasPairAfterString(const Ref<PDF::Value>& value)
{
    bool has = false;
    visitValues(value, [&has](const Ref<PDF::Value>& part) {
        const Ref<PDF::StringObj> string = part.cast<PDF::StringObj>();
        const auto source = string ? string->source() : nullptr;
        const std::string text = source ? std::string(source->data(), source->data() + source->size()) : "";
        const std::size_t end = PDF::endOfLiteral(text.data(), text.size());
        has = has || text.find("<<", end) != text.npos || text.find(">>", end) != text.npos;
    });
    return has;
}

// Whether sources of the trailer's values may be kept, of which the search counts brackets in strings and comments, too.
bool hasNotesInTrailer(const Ref<PDF::Document>& document)
{
    const PDF::ReadingNotes notes = PDF::readingNotes(document);
    bool has = false;
    for (std::size_t kind = 0; kind < PDF::readingNoteCount; ++kind)
        if (const auto& entry = notes.of(PDF::ReadingNote(kind)); entry.count != 0)
            has = has || entry.id == 0;
    return has;
}

// Whether an exact file may come back otherwise, or not at all.
bool isExcused(const Ref<PDF::Document>& document)
{
    const auto isOdd = [](const Ref<PDF::Value>& value) {
        return hasLongFraction(value, true) || depthOf(value) > Limits::maxNesting;
    };
    bool isExcused = isOdd(document->trailer()) || hasPairAfterString(document->trailer())
        || hasNotesInTrailer(document);
    for (const Ref<PDF::StreamObj>& stream : streamsOf(document))
        isExcused = isExcused || !hasOwnLength(document, stream);
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        isExcused = isExcused || isOdd(object->value());
    return isExcused;
}

void requireSame(const Ref<PDF::Document>& before, const Ref<PDF::Document>& after)
{
    const auto written = PDF::objectsAsWritten(before);
    const auto read = PDF::objectsAsWritten(after);
    require(written.size() == read.size(), "an exact file has all objects");
    for (std::size_t i = 0; i < written.size(); ++i)
        require(written[i]->id() == read[i]->id() && written[i]->generation() == read[i]->generation()
                && PDF::isSameExactly(written[i]->value(), read[i]->value()),
            "an exact file has every object as it was");
}

// Opens a file by a stripe that shows its bytes, so that sources are kept.
Ref<PDF::Document> openShown(std::string_view file)
{
    return PDF::Document::create(make<Host::MemoryStripe>(std::vector<std::uint8_t>(file.begin(), file.end())));
}

// Writes an exact file twice, opens it, and compares. Gives its size, 0 when it can't be written; none when that would
// take too long.
std::optional<std::uint64_t> checkExact(const Ref<PDF::Document>& document, std::string_view file, Allowance& allowance)
{
    constexpr std::uint64_t rowSize = 20;
    const auto objects = PDF::objectsAsWritten(document);
    const std::uint64_t rows = objects.empty() ? 0 : objects.back()->id();
    const std::uint64_t rowElements = rows > Limits::maxFreeRows(file.size()) + objects.size() ? 0 : rows * rowSize;
    if (!allowance.hasElements(3 * (elementsToWrite(document, file) + rowElements)))
        return {};
    const bool isWhole = isDataThere(document, file);
    const std::optional<ExactFile> written = writeExactly(document);
    require(isWhole || !written, "an exact file is written only when the data of all streams can be had");
    require(written || !isWhole || Error::get() == ErrOutOfRange,
        "an exact file is written unless ids have large gaps");
    if (!written)
        return 0;
    require(writeExactly(document)->bytes == written->bytes, "a document writes the same exact file twice");
    if (isExcused(document))
        return written->bytes.size();
    const Ref<PDF::Document> again = openShown(written->bytes);
    require(bool(again), "an exact file opens");
    requireSame(document, again);
    require(PDF::isSameExactly(Ref<PDF::Value>(written->trailer), Ref<PDF::Value>(again->trailer())),
        "an exact file has the trailer that was told");
    const std::optional<ExactFile> second = writeExactly(again);
    require(second && second->bytes == written->bytes, "an exact file comes back as it is");
    return written->bytes.size();
}

// A file of the system's with these bytes, and without a name.
Ref<Host::FileStripe> fileOf(std::string_view bytes)
{
    Host::Descriptor file(::memfd_create("file", MFD_CLOEXEC));
    require(::write(file.number(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
        "there is memory for a file");
    auto adopted = Host::FileBytes::adopt(std::move(file));
    require(bool(adopted), "a file in memory is a file");
    return make<Host::FileStripe>(std::move(*adopted));
}

} // namespace

Ref<PDF::Document> openFile(std::string_view file) noexcept
{
    return ask("create",
        {ErrNoHeaderLine, ErrBadHeader, ErrBadLineEnding, ErrNoEofMarker, ErrNoStartXref, ErrNoTrailerKeyword,
            ErrBadTrailer, ErrBadXref, ErrBadObject},
        [&] { return Tests::open(std::string(file)); });
}

const char* reasonForLoss(const Ref<PDF::Document>& document, std::uint32_t first) noexcept
{
    if (const char* reason = reasonInValue(document->trailer()))
        return reason;
    if (hasInString(document->trailer(), "<<") || hasInString(document->trailer(), ">>"))
        return "brackets in a string of the trailer, which the search for its keyword counts";
    for (const Ref<PDF::StreamObj>& stream : streamsOf(document))
        if (const char* reason = reasonInStream(document, stream))
            return reason;
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document)) {
        if (object->id() != ++first)
            return "ids with gaps, which the table can't show";
        if (const char* reason = reasonInValue(object->value()))
            return reason;
    }
    return nullptr;
}

namespace {

// The same for `Document::write`.
void checkPlain(Ref<PDF::Document> document, std::string_view file, Allowance& allowance)
{
    if (!allowance.hasElements(2 * elementsToWrite(document, file)))
        return;
    const std::optional<std::string> written = writeTwice(document, file);
    if (!written)
        return;
    const char* reason = reasonForLoss(document, firstOfTable(*written));
    document = nullptr;
    checkReopened(*written, reason);
}

} // namespace

void checkRoundTrip(Ref<PDF::Document> document, std::string_view file, Allowance& allowance) noexcept
{
    checkExact(document, file, allowance);
    checkPlain(std::move(document), file, allowance);
}

void checkExamined(Ref<PDF::Document> document, std::string_view file, Allowance& allowance) noexcept
{
    const Ref<PDF::Document> shown = openShown(file);
    require(bool(shown), "a stripe that shows its bytes opens, too");
    const std::optional<std::uint64_t> size = checkExact(shown, file, allowance);
    if (!size)
        return;
    checkPlain(std::move(document), file, allowance);
    const auto examination = Host::examine(fileOf(file));
    if (!examination)
        return require(!examination.refusal().message.empty(), "a refusal has words");
    require(examination->size == *size, "a new file has the size that was foretold");
}

} // namespace Fuzz
